// The tool on Windows, from outside.
#include <gmock/gmock.h>

#include "host/utf8_path.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

class Program : public testing::Test {
 protected:
  std::string Path(const std::string& name) const {
    return Utf8OfPath(folder_.path() / PathOfUtf8(name));
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(Program, ConvertsAWholeFolderWithoutLoss) {
  const Outcome outcome =
      RunPxl({"convert", SamplePicture("raccoon-16.png"), SamplePicture("cat-float.exr"), "--depth",
              "128", "-o", Utf8OfPath(folder_.path())});
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_THAT(folder_.Names(), ElementsAre("cat-float.exr", "raccoon-16.exr"));
  EXPECT_EQ(ReadPictureFile(folder_ / "cat-float.exr").pixels,
            ReadPictureFile(SamplePicture("cat-float.exr")).pixels);
}

TEST_F(Program, KeepsEveryPixelAt32Bits) {
  const Outcome outcome = RunPxl({"convert", SamplePicture("astronaut.png"), "--depth", "32",
                                  "--via", "128,64", "-o", Path("out.png")});
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_EQ(ReadPictureFile(folder_ / "out.png").pixels,
            ReadPictureFile(SamplePicture("astronaut.png")).pixels);
}

TEST_F(Program, ComparesPictures) {
  const std::string astronaut = SamplePicture("astronaut.png");
  const std::string out = Path("out.png");
  RunPxl({"convert", astronaut, "--depth", "32", "-o", out});
  EXPECT_EQ(RunPxl({"diff", astronaut, out}).code, 0);
  EXPECT_EQ(RunPxl({"diff", astronaut, SamplePicture("coffee.png")}).code, 1);
  EXPECT_EQ(RunPxl({"diff", astronaut, Path("none.png")}).code, 2);
}

TEST_F(Program, TakesNamesThatNeedUnicode) {
  const std::string in = Path("\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA9.png");
  const std::string out = Path("\xCE\xA9.png");
  std::filesystem::copy_file(SamplePicture("astronaut.png"), PathOfUtf8(in));
  const Outcome outcome = RunPxl({"convert", in, "--depth", "32", "-o", out});
  EXPECT_EQ(outcome.code, 0) << outcome.errors;
  EXPECT_TRUE(std::filesystem::exists(PathOfUtf8(out)));
  const Outcome missing = RunPxl({"info", Path("\xC3\xA9.png")});
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.errors, "pxl: " + Path("\xC3\xA9.png") + ": No such file or directory\n");
}

TEST_F(Program, RefusesToWrite16BitPng) {
  const Outcome outcome =
      RunPxl({"convert", SamplePicture("raccoon-16.png"), "--depth", "64", "-o", Path("out.png")});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.errors,
              HasSubstr("out.png: PNG of 16 bits a channel cannot be written on this system; "
                        "OpenEXR can\n"));
  EXPECT_THAT(folder_.Names(), testing::IsEmpty());
}

TEST_F(Program, MakesSheetsWithLabels) {
  const Outcome demo = RunPxl({"demo", SamplePicture("coffee.png"), "-o", Path("demo")});
  EXPECT_EQ(demo.code, 0) << demo.errors;
  EXPECT_THAT(demo.output, HasSubstr("coffee-32.png (nothing changed)\n"));
  EXPECT_THAT(demo.output, HasSubstr("coffee-64.exr (largest change 1.5e-05)\n"));
  EXPECT_EQ(ReadPictureFile(folder_ / "demo/coffee-sheet.png").header.width, 4 * 480 + 5 * 24);
  const Outcome modes = RunPxl({"modes", SamplePicture("astronaut.png"),
                                SamplePicture("cat-float.exr"), "-o", Path("modes.png")});
  EXPECT_EQ(modes.code, 0) << modes.errors;
  const Outcome sheet = RunPxl({"sheet", SamplePicture("coffee.png"), "-o", Path("sheet.png")});
  EXPECT_EQ(sheet.code, 0) << sheet.errors;
}

TEST_F(Program, ReportsAMissingFont) {
  const Outcome outcome = RunPxl({"demo", SamplePicture("astronaut.png"), "-o", Path("demo")},
                                 {{"PXL_FONT", "C:\\no.ttf"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: C:\\no.ttf: is not a usable font\n");
}

TEST_F(Program, FailsWithTheStatusOfTheKindOfFailure) {
  EXPECT_EQ(RunPxl({"frob"}).code, 2);
  EXPECT_EQ(RunPxl({"frob"}).errors, "pxl: frob: is no verb; see pxl --help\n");
  const Outcome picture = RunPxl({"convert", Path("no.png"), "--depth", "32", "-o", Path("o.png")});
  EXPECT_EQ(picture.code, 1);
  EXPECT_EQ(picture.errors, "pxl: " + Path("no.png") + ": No such file or directory\n");
}

TEST_F(Program, TranslatesReports) {
  const Outcome outcome =
      RunPxl({"--language", PXL_TRANSLATIONS "/ja.txt", "convert", SamplePicture("astronaut.png"),
              "--depth", "128", "-o", Path("out.exr")},
             {{"PXL_MEMORY_BUDGET", "100000"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("\xE7\x8F\xBE\xE5\x9C\xA8\xE3\x81\xAE"));
}
