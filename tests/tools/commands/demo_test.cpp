// pxl demo: the files and sheets that it writes.
#include <gmock/gmock.h>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::HasSubstr;

namespace {

class Demonstration : public testing::Test {
 protected:
  Outcome Run(std::vector<std::string> pictures) {
    std::vector<std::string> arguments = {"demo", "-o", (folder_ / "demo").string()};
    arguments.insert(arguments.end(), pictures.begin(), pictures.end());
    return RunPxl(arguments);
  }
  std::filesystem::path Result(const std::string& name) const { return folder_ / "demo" / name; }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(Demonstration, LeavesAPictureForEveryDepthAndASheet) {
  const Outcome outcome = Run(SamplePictures());
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  for (const std::string name : {"astronaut", "coffee", "raccoon-16", "cat-float"}) {
    for (const std::string suffix : {"-32.png", "-64.png", "-128.png", "-sheet.png"}) {
      EXPECT_GT(ReadPictureFile(Result(name + suffix)).header.width, 0) << name << suffix;
      EXPECT_THAT(outcome.output, HasSubstr(Result(name + suffix).string()));
    }
  }
}

TEST_F(Demonstration, LeavesWhatConvertLeaves) {
  Run({SamplePicture("cat-float.exr")});
  for (const std::string depth : {"32", "64", "128"}) {
    const std::string output = (folder_ / "out.png").string();
    RunPxl({"convert", SamplePicture("cat-float.exr"), "-o", output, "--depth", depth});
    EXPECT_EQ(ReadBytes(Result("cat-float-" + depth + ".png")), ReadBytes(output)) << depth;
  }
}

TEST_F(Demonstration, ShowsFourPicturesOfEqualWidthOnTheSheet) {
  Run({SamplePicture("coffee.png")});
  const pxl::Picture sheet = ReadPictureFile(Result("coffee-sheet.png"));
  EXPECT_EQ(sheet.header.width, 4 * 480 + 5 * 24);
  EXPECT_GT(sheet.header.height, 320 + 3 * 24);
}

TEST_F(Demonstration, PrintsTheLossesOfTheConversions) {
  const std::string output = Run({SamplePicture("coffee.png")}).output;
  EXPECT_THAT(output, HasSubstr("coffee-32.png (nothing changed)"));
  EXPECT_THAT(output, HasSubstr("coffee-64.png (largest change 1.5e-05)"));
}

TEST_F(Demonstration, FailsInOneLine) {
  const Outcome missing = Run({"no.png"});
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.errors, "pxl: no.png: No such file or directory\n");
  const Outcome twice = Run({"a/x.png", "b/x.exr"});
  EXPECT_EQ(twice.code, 2);
  EXPECT_EQ(twice.errors, "pxl: b/x.exr: another picture has the same name\n");
}

TEST_F(Demonstration, ReportsAMissingFont) {
  const Outcome outcome =
      RunPxl({"demo", "-o", (folder_ / "demo").string(), SamplePicture("astronaut.png")},
             {{"PXL_FONT", "/no/font.ttf"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: /no/font.ttf: is not a usable font\n");
}
