// Files, folders, tags and memory of conversions.
#include <gmock/gmock.h>

#include "tests/support/system/system_features.h"
#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/pictures/colour_tags.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class Conversion : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  Outcome Convert(const std::string& input, const std::string& output, const std::string& depth) {
    return RunPxl({"convert", input, "-o", Path(output), "--depth", depth});
  }

  // Makes a small picture and returns its path.
  std::string Small(const std::string& name, std::vector<pxl::PngChunk> chunks = {}) {
    PngRecipe recipe;
    recipe.chunks = std::move(chunks);
    recipe.sample = [](auto, auto, int c) { return 10U + static_cast<unsigned>(c); };
    WriteBytes(folder_ / name, MakePng(recipe));
    return Path(name);
  }

  TemporaryFolder folder_;
};

const pxl::PngChunk kGamma = {"gAMA", {0, 0, 0xB1, 0x8F}};
const pxl::PngChunk kProfile = {"iCCP", {'n', 0, 0, 1, 2, 3}};

std::string SmallExr(const std::optional<pxl::Chromaticities>& chromaticities) {
  ExrRecipe recipe;
  recipe.chromaticities = chromaticities;
  recipe.value = [](int, int, const std::string&) { return 0.5F; };
  return MakeExr(recipe);
}

constexpr pxl::Chromaticities kVideo = {0.3127, 0.329, 0.64, 0.33, 0.3, 0.6, 0.15, 0.06};

}  // namespace

TEST_F(Conversion, ThatTheBlitRefusesIsAFailureWhenOnlyTheBlitMayDoIt) {
  const std::string inputs[] = {SamplePicture("raccoon-16.png"), SamplePicture("cat-float.exr")};
  const std::string depths[] = {"128", "64"};
  for (std::size_t i = 0; i < 2; ++i) {
    const Outcome outcome =
        RunPxl({"convert", inputs[i], "-o", Path("out.png"), "--depth", depths[i], "--blit-only"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + inputs[i] + ": ")) << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr("unexpected bitdepth combination in PXLp_Blit64()"));
    EXPECT_THAT(folder_.Names(), IsEmpty());
  }
}

TEST_F(Conversion, KeepsColourTagsFromPngToPng) {
  const Outcome outcome = Convert(Small("in.png", {kGamma, kProfile}), "out.png", "64");
  EXPECT_EQ(outcome.errors, "");
  const pxl::ColourTags colour = ReadPictureFile(Path("out.png")).header.colour;
  ASSERT_EQ(colour.chunks.size(), 2U);
  EXPECT_EQ(pxl::FindChunk(colour, "gAMA")->data, kGamma.data);
  EXPECT_EQ(pxl::FindChunk(colour, "iCCP")->data, kProfile.data);
}

TEST_F(Conversion, ReportsInOneLineTheTagsThatOpenExrCannotKeep) {
  const std::string input = Small("in.png", {kGamma, kProfile});
  const Outcome outcome = Convert(input, "out.exr", "128");
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "pxl: " + input + ": note: not kept in the output: gAMA and iCCP\n");
}

TEST_F(Conversion, CarriesChromaticitiesBothWays) {
  WriteBytes(folder_ / "in.exr", SmallExr(kVideo));
  EXPECT_EQ(Convert(Path("in.exr"), "middle.png", "64").errors, "");
  const pxl::ColourTags middle = ReadPictureFile(Path("middle.png")).header.colour;
  ASSERT_NE(pxl::FindChunk(middle, "cHRM"), nullptr);
  EXPECT_EQ(pxl::ChromaticitiesOfChunk(*pxl::FindChunk(middle, "cHRM")), kVideo);

  EXPECT_EQ(Convert(Path("middle.png"), "out.exr", "128").errors, "");
  EXPECT_EQ(ReadPictureFile(Path("out.exr")).header.colour.chromaticities,
            ReadPictureFile(Path("in.exr")).header.colour.chromaticities);
}

TEST_F(Conversion, ReportsChromaticitiesThatPngCannotKeep) {
  pxl::Chromaticities odd = kVideo;
  odd[3] = -0.5;
  WriteBytes(folder_ / "in.exr", SmallExr(odd));
  EXPECT_THAT(Convert(Path("in.exr"), "out.png", "64").errors,
              HasSubstr("note: not kept in the output: the chromaticities\n"));
}

TEST_F(Conversion, IntoAFolderKeepsNamesAndChoosesEndings) {
  std::filesystem::create_directory(folder_ / "out");
  const std::string first = Small("one.png");
  const std::string second = Small("two.of.them.png");
  WriteBytes(folder_ / "three.exr", SmallExr({}));
  for (const std::string depth : {"32", "64", "128"}) {
    const Outcome outcome =
        RunPxl({"convert", first, second, Path("three.exr"), "-o", Path("out"), "--depth", depth});
    EXPECT_EQ(outcome.code, 0);
    // No progress bar in a pipe.
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "");
  }
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder_ / "out")) {
    names.push_back(entry.path().filename().string());
  }
  EXPECT_THAT(names, testing::UnorderedElementsAre("one.png", "two.of.them.png", "three.png",
                                                   "one.exr", "two.of.them.exr", "three.exr"));
  EXPECT_EQ(ReadPictureFile(folder_ / "out" / "one.png").header.samples,
            pxl::SampleType::Integer16);
}

TEST_F(Conversion, OfManyGoesOnAfterAFailure) {
  std::filesystem::create_directory(folder_ / "out");
  const std::string good = Small("good.png");
  const std::string bad = Path("bad.png");
  WriteBytes(bad, "no picture");
  const Outcome outcome = RunPxl({"convert", bad, good, "-o", Path("out"), "--depth", "32"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: " + bad + ": is neither a PNG nor an OpenEXR file\n");
  EXPECT_TRUE(std::filesystem::exists(folder_ / "out" / "good.png"));
  EXPECT_FALSE(std::filesystem::exists(folder_ / "out" / "bad.png"));
}

TEST_F(Conversion, ShowsABarOnATerminalAndClearsItForMessages) {
  if (!HasPseudoTerminals()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  std::filesystem::create_directory(folder_ / "out");
  const std::string good = Small("good.png");
  const std::string bad = Path("bad.png");
  WriteBytes(bad, "no picture");
  const Outcome outcome =
      RunPxlOnATerminal({"convert", good, bad, "-o", Path("out"), "--depth", "32"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("] 0/2"));
  EXPECT_THAT(outcome.output, HasSubstr("] 1/2\r\x1B[Kpxl: " + bad + ": is neither"));
}

TEST_F(Conversion, FailsWhenTheMemoryCannotBePrinted) {
  const Outcome outcome = RunPxlInShell(
      "", {"convert", Small("in.png"), "-o", Path("out.png"), "--depth", "64", "--verbose"},
      ">/dev/full");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: standard output: "));
}

TEST_F(Conversion, KnowsInputsByContentAndEndingsInAnyCase) {
  std::filesystem::copy_file(Small("in.png"), folder_ / "in.exr");
  EXPECT_EQ(Convert(Path("in.exr"), "OUT.PNG", "32").code, 0);
  EXPECT_EQ(ReadPictureFile(Path("OUT.PNG")).pixels, ReadPictureFile(Path("in.png")).pixels);
}

TEST_F(Conversion, PrintsTheMemoryOfEachWorld) {
  const std::string coffee = SamplePicture("coffee.png");
  const Outcome large = RunPxl(
      {"convert", coffee, "-o", Path("out.png"), "--via", "128", "--depth", "64", "--verbose"});
  EXPECT_EQ(large.output,
            coffee + ": 32 bits, 480 x 320, 619536 bytes from the pool, 1936 a row\n" + coffee +
                ": 128 bits, 480 x 320, 2457620 bytes from the pool, 7680 a row\n" + coffee +
                ": 64 bits, 480 x 320, 1228820 bytes from the pool, 3840 a row\n");
  const std::string small = Small("small.png");
  const Outcome heap =
      RunPxl({"convert", small, "-o", Path("out.png"), "--depth", "32", "--verbose"});
  EXPECT_EQ(heap.output, small + ": 32 bits, 1 x 1, 32 bytes from the heap, 16 a row\n");
}

TEST_F(Conversion, FollowsTheSettingsOfTheModule) {
  WriteBytes(folder_ / "settings", "VirtualAllocFrames = false\n");
  const Outcome outcome = RunPxl(
      {"convert", SamplePicture("coffee.png"), "-o", Path("out.png"), "--depth", "32", "--verbose"},
      {{"VETRIX_SETTINGS", Path("settings")}});
  EXPECT_THAT(outcome.output, HasSubstr("from the heap"));
}

TEST_F(Conversion, ReportsLackOfMemoryInTheModulesWords) {
  const std::string coffee = SamplePicture("coffee.png");
  const Outcome outcome = RunPxl({"convert", coffee, "-o", Path("out.png"), "--depth", "64"},
                                 {{"PXL_MEMORY_BUDGET", "1000000"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + coffee + ": Unable to allocate enough memory"))
      << outcome.errors;
  EXPECT_THAT(outcome.errors, HasSubstr("(480 x 320 @ 16 bpc)"));
  EXPECT_THAT(outcome.errors, HasSubstr("(12805)"));
  EXPECT_THAT(folder_.Names(), IsEmpty());
}

TEST_F(Conversion, LeavesTheOldOutputAloneWhenItFails) {
  WriteBytes(folder_ / "out.png", "old");
  WriteBytes(folder_ / "in.png", ReadBytes(SamplePicture("coffee.png")).substr(0, 100000));
  const Outcome outcome = Convert(Path("in.png"), "out.png", "32");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + Path("in.png") + ": damaged PNG: "));
  EXPECT_EQ(ReadBytes(folder_ / "out.png"), "old");
  EXPECT_THAT(folder_.Names(), ElementsAre("in.png", "out.png"));
}

TEST_F(Conversion, RemovesWhatItCouldNotFinishWriting) {
  for (const std::string name : {"out.png", "out.exr"}) {
    // The limit of files is 8 blocks of 512 or 1024 bytes; writing more is an error.
    const Outcome outcome = RunPxlInShell(
        "trap '' XFSZ; ulimit -f 8;",
        {"convert", SamplePicture("astronaut.png"), "-o", Path(name), "--depth", "32"}, "");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + Path(name) + ": cannot write: "))
        << outcome.errors;
    EXPECT_THAT(folder_.Names(), IsEmpty());
  }
}
