// The program under limits of the system: a full volume, few descriptors, little
// memory. It reports the cause in one line, and leaves nothing behind.
#include <gmock/gmock.h>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::AnyOf;
using testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

class UnderLimits : public testing::Test {
 protected:
  UnderLimits() {
    for (const std::string name : {"mapped", "out"}) fs::create_directory(folder_ / name);
    fs::copy_file(SamplePicture("coffee.png"), folder_ / "in.png");
  }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // Runs a conversion in mapped files after the preparation in the same shell.
  Outcome Convert(const std::string& preparation) const {
    return RunPxlInShell(
        preparation + " VETRIX_MAPPED_DIR='" + Path("mapped") + "' TMPDIR='" + Path("mapped") + "'",
        {"convert", Path("in.png"), "-o", Path("out/o.exr"), "--via", "64", "--depth", "128",
         "--mapped"},
        "");
  }

  void ExpectNothingLeft() const {
    EXPECT_TRUE(fs::is_empty(folder_ / "mapped"));
    EXPECT_TRUE(fs::is_empty(folder_ / "out"));
  }

  void ExpectFailure(const std::string& preparation, const std::string& name,
                     const std::string& reason) const {
    SCOPED_TRACE(preparation);
    const Outcome outcome = Convert(preparation);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + Path(name) + ": ")) << outcome.errors;
    EXPECT_THAT(outcome.errors, HasSubstr(reason));
    EXPECT_EQ(outcome.output, "");
    ExpectNothingLeft();
  }

  // Raises the limit, in KiB, step by step: the program reports lack of memory until
  // it has enough. Below some limit the system cannot start it.
  void ExpectSoundSteps(const std::string& limit, int least, int step) {
    int failures = 0;
    int successes = 0;
    for (int i = 0; i < 100 && successes < 3; ++i) {
      const std::string preparation = limit + " " + std::to_string(least + i * step) + ";";
      SCOPED_TRACE(preparation);
      const Outcome outcome = Convert(preparation);
      if (outcome.code == 127) continue;
      outcome.code == 0 ? ++successes : ++failures;
      if (outcome.code == 0) {
        EXPECT_TRUE(ReadPictureFile(Path("out/o.exr")).pixels == expected_);
        fs::remove(folder_ / "out" / "o.exr");
      } else {
        ExpectShortage(outcome);
      }
      ExpectNothingLeft();
    }
    std::cout << limit << ": " << failures << " failures, " << successes << " successes\n";
    EXPECT_GT(failures, 2);
    EXPECT_EQ(successes, 3);
  }

  void LearnWhatIsExpected() {
    ASSERT_EQ(Convert("").code, 0);
    expected_ = ReadPictureFile(Path("out/o.exr")).pixels;
    fs::remove(folder_ / "out" / "o.exr");
  }

 private:
  static void ExpectShortage(const Outcome& outcome) {
    EXPECT_THAT(outcome.code, AnyOf(1, 2));
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: ")) << outcome.errors;
    EXPECT_THAT(outcome.errors, AnyOf(HasSubstr("memory"), HasSubstr("compression")));
  }

  TemporaryFolder folder_;
  std::vector<std::byte> expected_;
};

bool CanMount() {
  return RunPxlInShell("unshare -rm true &&", {"--version"}, "").code == 0;
}

}  // namespace

TEST_F(UnderLimits, ReportsAFullVolumeOfMappedFiles) {
  if (!CanMount()) GTEST_SKIP() << "no volume can be mounted here";
  ExpectFailure(
      "exec unshare -rm sh -c 'mount -t tmpfs -o size=256k none \"$1\"; shift; exec env "
      "\"$@\"' sh '" +
          Path("mapped") + "'",
      "in.png", "for a mapped file: No space left on device");
}

TEST_F(UnderLimits, ReportsAFullVolumeOfOutput) {
  if (!CanMount()) GTEST_SKIP() << "no volume can be mounted here";
  ExpectFailure(
      "exec unshare -rm sh -c 'mount -t tmpfs -o size=64k none \"$1\"; shift; exec env "
      "\"$@\"' sh '" +
          Path("out") + "'",
      "out/o.exr", "cannot write: No space left on device");
}

TEST_F(UnderLimits, ReportsTheLimitOfFiles) {
  // In blocks of 512 bytes: too little for the Worlds, then for the output alone.
  ExpectFailure("ulimit -f 100;", "in.png", "exceed the limit on file sizes: File too large");
  const Outcome outcome = RunPxlInShell(
      "ulimit -f 20;", {"convert", Path("in.png"), "-o", Path("out/o.exr"), "--depth", "128"}, "");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: " + Path("out/o.exr") + ": cannot write: File too large\n");
  ExpectNothingLeft();
}

TEST_F(UnderLimits, ReportsThatNoDescriptorIsLeft) {
  // Descriptors inherited from the caller of the tests would take the places.
  const std::string alone = "exec 3>&- 4>&- 5>&- 6>&- 7>&- 8>&- 9>&-;";
  // After the standard streams one for the picture, then one for each World.
  ExpectFailure(alone + " ulimit -n 4;", "in.png", "Too many open files");
  ExpectFailure(alone + " ulimit -n 5;", "in.png", "Too many open files");
}

TEST_F(UnderLimits, ReportsLackOfAddressSpace) {
  LearnWhatIsExpected();
  ExpectSoundSteps("ulimit -v", 8000, 120);
}

TEST_F(UnderLimits, ReportsLackOfPrivateMemory) {
  LearnWhatIsExpected();
  ExpectSoundSteps("ulimit -d", 300, 50);
}
