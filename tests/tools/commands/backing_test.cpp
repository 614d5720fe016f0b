// The same conversions in frames, in mapped files and on drawing surfaces.
#include <gmock/gmock.h>

#include <limits>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Backings : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // Converts a picture with these options; returns the bytes of the file.
  std::string Converted(const std::string& input, std::vector<std::string> options) {
    options.insert(options.begin(), {"convert", input, "-o", Path("out.png")});
    const Outcome outcome = RunPxl(options);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    std::string bytes = ReadBytes(folder_ / "out.png");
    std::filesystem::remove(folder_ / "out.png");
    return bytes;
  }

  std::string Wide(unsigned width) {
    PngRecipe recipe;
    recipe.width = width;
    recipe.sample = [](auto x, auto, int c) { return (x + static_cast<unsigned>(c)) & 0xFFU; };
    WriteBytes(folder_ / "wide.png", MakePng(recipe));
    return Path("wide.png");
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(Backings, GiveTheSamePictures) {
  for (const std::string& picture : SamplePictures()) {
    for (const std::string ways : {"32", "64", "128", "32,64,128", "64,32,128,64"}) {
      const std::vector<std::string> options = {"--via", ways, "--depth", "64"};
      const std::string expected = Converted(picture, options);
      ASSERT_FALSE(expected.empty());
      std::vector<std::string> onSurfaces = options;
      onSurfaces.emplace_back("--platform");
      EXPECT_TRUE(Converted(picture, onSurfaces) == expected) << picture << " by way of " << ways;
      const bool floatsToBytes = picture.ends_with(".exr") && ways.starts_with("32");
      if (floatsToBytes) continue;  // differently rounded, as tested below
      std::vector<std::string> inFiles = options;
      inFiles.emplace_back("--mapped");
      EXPECT_TRUE(Converted(picture, inFiles) == expected) << picture << " by way of " << ways;
    }
  }
}

TEST_F(Backings, RoundFloatsTo8BitsInMappedFilesOnly) {
  const std::vector<float> reds = {0.5F,  0.0F,  1.0F,
                                   2.0F,  -1.0F, std::nanf(""),
                                   0.25F, 0.75F, std::numeric_limits<float>::infinity()};
  const std::vector<unsigned> rounded = {128, 0, 255, 255, 0, 0, 64, 191, 255};
  const std::vector<unsigned> cutOff = {127, 0, 255, 255, 0, 0, 63, 191, 255};
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {static_cast<int>(reds.size()) - 1, 0}};
  recipe.value = [&](int x, int, const std::string& channel) {
    return channel == "R" ? reds[static_cast<std::size_t>(x)] : 1.0F;
  };
  WriteBytes(folder_ / "in.exr", MakeExr(recipe));
  for (const bool mapped : {true, false}) {
    const Outcome outcome = RunPxl({"convert", Path("in.exr"), "-o", Path("out.png"), "--depth",
                                    "32", mapped ? "--mapped" : "--platform"});
    ASSERT_EQ(outcome.errors, "");
    const pxl::Picture picture = ReadPictureFile(folder_ / "out.png");
    for (std::size_t i = 0; i < reds.size(); ++i) {
      EXPECT_EQ(std::to_integer<unsigned>(picture.pixels[4 * i + 1]),
                (mapped ? rounded : cutOff)[i])
          << reds[i] << (mapped ? " mapped" : " on a surface");
    }
  }
}

TEST_F(Backings, ArePrintedWorldByWorld) {
  const std::string coffee = SamplePicture("coffee.png");
  const std::vector<std::string> job = {"convert", coffee,    "-o", Path("out.png"), "--via",
                                        "32,128",  "--depth", "32", "--verbose"};
  std::vector<std::string> mapped = job;
  mapped.emplace_back("--mapped");
  EXPECT_EQ(RunPxl(mapped).output,
            coffee + ": 32 bits, 480 x 320, 619536 bytes of a mapped file, 1936 a row\n" + coffee +
                ": 128 bits, 480 x 320, 2457620 bytes of a mapped file, 7680 a row\n" + coffee +
                ": 32 bits, 480 x 320, 619536 bytes of a mapped file, 1936 a row\n");
  std::vector<std::string> platform = job;
  platform.emplace_back("--platform");
  const std::string surface =
      coffee + ": 32 bits, 480 x 320, 614400 bytes of a drawing surface, 1920 a row\n";
  // 32 to 32 is a copy by the drawing layer, so it is made.
  EXPECT_EQ(RunPxl(platform).output,
            surface + surface + coffee +
                ": 128 bits, 480 x 320, 2457620 bytes from the pool, 7680 a row\n" + surface);
}

TEST_F(Backings, MapFilesOfTheVolumeAskedForAndLeaveNoneThere) {
  std::filesystem::create_directory(folder_ / "volume");
  const std::string astronaut = SamplePicture("astronaut.png");
  const std::vector<std::string> job = {"convert", astronaut, "-o",      Path("out.png"),
                                        "--depth", "64",      "--mapped"};
  EXPECT_EQ(RunPxl(job, {{"VETRIX_MAPPED_DIR", Path("volume")}}).errors, "");
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "volume"));
  std::filesystem::remove(folder_ / "out.png");

  const Outcome nowhere = RunPxl(job, {{"VETRIX_MAPPED_DIR", Path("missing")}});
  EXPECT_EQ(nowhere.code, 1);
  EXPECT_TRUE(IsOneLine(nowhere.errors, "pxl: " + astronaut + ": ")) << nowhere.errors;
  EXPECT_THAT(nowhere.errors, HasSubstr(Path("missing")));
  EXPECT_THAT(folder_.Names(), ElementsAre("volume"));
}

TEST_F(Backings, OfSurfacesEndWhereTheDrawingLayerDoes) {
  Wide(4095);
  const std::string widest = Converted(Path("wide.png"), {"--depth", "32", "--platform"});
  EXPECT_TRUE(widest == Converted(Path("wide.png"), {"--depth", "32"}));
  Wide(4096);
  const Outcome outcome =
      RunPxl({"convert", Path("wide.png"), "-o", Path("out.png"), "--depth", "32", "--platform"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + Path("wide.png") + ": ")) << outcome.errors;
  EXPECT_THAT(outcome.errors, HasSubstr("An argument of a drawing call is not legal"));
  EXPECT_THAT(folder_.Names(), ElementsAre("wide.png"));
}

TEST_F(Backings, ExcludeEachOtherAndMappedOnesTheBlit) {
  const std::vector<std::string> job = {
      "convert", SamplePicture("coffee.png"), "-o", Path("out.png"), "--depth", "32", "--mapped"};
  for (const std::string other : {"--platform", "--blit-only"}) {
    std::vector<std::string> arguments = job;
    arguments.push_back(other);
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: --")) << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr(": excludes --"));
  }
  EXPECT_THAT(folder_.Names(), IsEmpty());
}
