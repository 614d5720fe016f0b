// Folders that exist and are unusable.
#include <gmock/gmock.h>

#include "tests/support/system/system_features.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::HasSubstr;

TEST(DoctorOfFolders, FindsOneThatCannotBeWritten) {
  if (!HasProcessFiles()) GTEST_SKIP() << "/proc is not mounted";
  // Not even the superuser can make files there.
  const Outcome outcome = RunPxl({"doctor"}, {{"VETRIX_MAPPED_DIR", "/proc"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output, HasSubstr("\nproblem: mapped files in /proc: cannot make a file"));
}

TEST(DoctorOfFolders, FindsALimitOnTheSizeOfFiles) {
  const Outcome outcome = RunPxlInShell("ulimit -f 64;", {"doctor"}, "");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_THAT(outcome.output,
              HasSubstr("1048576 bytes exceed the limit on file sizes: File too large\n"));
}

TEST(DoctorOfFolders, LeavesNothingBehind) {
  const TemporaryFolder folder;
  const Outcome outcome = RunPxl({"doctor"}, {{"VETRIX_MAPPED_DIR", folder.path().string()}});
  EXPECT_EQ(outcome.code, 0) << outcome.output;
  EXPECT_THAT(folder.Names(), testing::IsEmpty());
}
