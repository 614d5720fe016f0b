// The command line: help, exit codes and error messages.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/system/system_features.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

void ExpectUsageError(const std::vector<std::string>& arguments, const std::string& line) {
  const Outcome outcome = RunPxl(arguments);
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.errors, "pxl: " + line + "\n");
  EXPECT_EQ(outcome.output, "");
}

void ExpectFailure(const std::vector<std::string>& arguments, const std::string& line) {
  const Outcome outcome = RunPxl(arguments);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: " + line + "\n");
  EXPECT_EQ(outcome.output, "");
}

class ConvertUsage : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // A copy of a sample picture.
  std::string Picture(const std::string& name) {
    std::filesystem::copy_file(SamplePicture("astronaut.png"), folder_ / name);
    return Path(name);
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST(Usage, IsShownForTheProgramAndForEveryVerb) {
  EXPECT_THAT(RunPxl({"--help"}).output, HasSubstr("convert"));
  for (const std::string verb : {"convert", "info", "messages", "demo", "diff", "modes", "sheet",
                                 "soak", "selftest", "doctor"}) {
    const Outcome outcome = RunPxl({verb, "--help"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.output, HasSubstr("Usage: pxl " + verb));
    EXPECT_THAT(outcome.output, HasSubstr("PXL_SCRAMBLE=1"));
  }
}

TEST(Usage, PrintsTheVersion) {
  EXPECT_EQ(RunPxl({"--version"}).output, "pxl 31.14\n");
}

TEST(Usage, NamesWhatIsWrongInOneLine) {
  ExpectUsageError({}, "a verb is needed; see pxl --help");
  ExpectUsageError({"frob"}, "frob: is no verb; see pxl --help");
  ExpectUsageError({"--frob"}, "--frob: is not expected");
  ExpectUsageError({"messages", "more"}, "more: is not expected");
  ExpectUsageError({"convert"}, "IN: is required");
  ExpectUsageError({"convert", "a.png", "--depth", "32"}, "--output: is required");
  ExpectUsageError({"convert", "a.png", "-o", "b.png"}, "--depth: is required");
  ExpectUsageError({"convert", "a.png", "-o", "b.png", "--depth", "16"},
                   "--depth: 16 is none of 8, 32, 64, 128");
  ExpectUsageError({"convert", "a.png", "-o", "b.png", "--depth", "many"},
                   "--depth: many is none of 8, 32, 64, 128");
  ExpectUsageError({"convert", "a.png", "-o", "b.png", "--depth", "32", "--via", "64,16"},
                   "--via: 16 is none of 8, 32, 64, 128");
  ExpectUsageError({"info", "--depth", "32"}, "--depth: requires FILE");
  ExpectUsageError({"demo", "a.png"}, "--output: is required");
}

TEST(Usage, CoversTheEnvironment) {
  const Outcome outcome = RunPxl({"info"}, {{"PXL_MEMORY_BUDGET", "much"}});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.errors, "pxl: PXL_MEMORY_BUDGET: is not a number: much\n");
}

TEST(Usage, KeepsOddNamesOnOneLine) {
  ExpectFailure({"convert", "a\nb\x1B[2J.png", "-o", "b.png", "--depth", "32"},
                "a b [2J.png: No such file or directory");
}

TEST_F(ConvertUsage, NeedsAnEndingItKnows) {
  const std::string in = Picture("in.png");
  for (const std::string name : {"out.jpg", "out", "png", ".png"}) {
    ExpectUsageError({"convert", in, "-o", Path(name), "--depth", "32"},
                     Path(name) + ": the ending must be .png or .exr");
  }
  EXPECT_THAT(folder_.Names(), ElementsAre("in.png"));
}

TEST_F(ConvertUsage, NeverWritesOverAnInput) {
  const std::string in = Picture("in.png");
  const std::string bytes = ReadBytes(in);
  std::filesystem::create_hard_link(in, folder_ / "same.png");
  std::filesystem::create_symlink("in.png", folder_ / "link.png");
  for (const std::string name : {"in.png", "same.png", "link.png", "./in.png"}) {
    ExpectUsageError({"convert", in, "-o", Path(name), "--depth", "32"},
                     Path(name) + ": is an input as well");
  }
  ExpectUsageError({"convert", in, "-o", folder_.path().string(), "--depth", "32"},
                   in + ": is an input as well");
  EXPECT_EQ(ReadBytes(in), bytes);
}

TEST_F(ConvertUsage, NeverWritesTwoPicturesToOneFile) {
  std::filesystem::create_directory(folder_ / "out");
  std::filesystem::create_directory(folder_ / "b");
  const std::string first = Picture("same.png");
  const std::string second = Picture("b/same.png");
  ExpectUsageError(
      {"convert", first, second, "-o", Path("out"), "--depth", "128"},
      Path("out/same.exr") + ": would be the output of both " + first + " and " + second);
  EXPECT_TRUE(std::filesystem::is_empty(folder_ / "out"));
}

TEST_F(ConvertUsage, NeedsAFolderForSeveral) {
  const std::string first = Picture("a.png");
  const std::string second = Picture("b.png");
  WriteBytes(folder_ / "file.png", "old");
  ExpectUsageError({"convert", first, second, "-o", Path("file.png"), "--depth", "32"},
                   Path("file.png") + ": is not a folder; several pictures need one");
  ExpectFailure({"convert", first, second, "-o", Path("missing"), "--depth", "32"},
                Path("missing") + ": no such folder");
  ExpectFailure({"convert", first, "-o", Path("missing/"), "--depth", "32"},
                Path("missing/") + ": no such folder");
  EXPECT_EQ(ReadBytes(folder_ / "file.png"), "old");
}

TEST_F(ConvertUsage, NeedsAPlaceToWrite) {
  const std::string in = Picture("in.png");
  ExpectFailure({"convert", in, "-o", Path("no/out.png"), "--depth", "32"},
                Path("no/out.png") + ": no such folder: " + Path("no"));
}

TEST_F(ConvertUsage, NeedsAFolderThatTakesFiles) {
  if (!HasProcessFiles()) GTEST_SKIP() << "/proc is not mounted";
  const Outcome outcome =
      RunPxl({"convert", Picture("in.png"), "-o", "/proc/out.png", "--depth", "32"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: /proc/out.png: cannot write there: "));
}

TEST_F(ConvertUsage, NeedsAnInputThatIsAFile) {
  ExpectFailure({"convert", Path("no.png"), "-o", Path("out.png"), "--depth", "32"},
                Path("no.png") + ": No such file or directory");
  ExpectFailure({"convert", folder_.path().string(), "-o", Path("out.png"), "--depth", "32"},
                folder_.path().string() + ": is a folder");
  ExpectFailure({"convert", "/dev/null", "-o", Path("out.png"), "--depth", "32"},
                "/dev/null: is not a regular file");
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), S_IRUSR | S_IWUSR), 0);
  ExpectFailure({"convert", Path("pipe"), "-o", Path("out.png"), "--depth", "32"},
                Path("pipe") + ": is not a regular file");
  std::filesystem::remove(folder_ / "pipe");
  EXPECT_THAT(folder_.Names(), IsEmpty());
}
