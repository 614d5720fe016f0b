// Streams that accept nothing, terminals, and names that are not UTF-8.
#include <gmock/gmock.h>

#include "tests/support/system/system_features.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/selftest_digests.h"
#include "tests/tools/support/temporary_folder.h"

using testing::HasSubstr;

TEST(Info, ThatCannotBePrintedIsAFailure) {
  const Outcome outcome = RunPxlInShell("", {"info"}, ">/dev/full");
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: standard output: "));
}

TEST(Info, CopesWithNamesThatAreNoUtf8) {
  const TemporaryFolder folder;
  const std::string odd = (folder / "\xFF.png").string();
  std::filesystem::copy_file(SamplePicture("astronaut.png"), odd);
  EXPECT_THAT(RunPxl({"info", odd}).output, HasSubstr(" 192 pixels\n"));
}

TEST(Messages, ThatCannotBePrintedAreAFailure) {
  for (const std::string option : {"--json", "--help"}) {
    const Outcome outcome = RunPxlInShell("", {"messages", option}, ">/dev/full");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: standard output: "));
  }
}

TEST(SelftestProgram, ShowsHowFarItIsOnATerminal) {
  if (!HasPseudoTerminals()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  const Outcome outcome = RunPxlOnATerminal({"selftest", "--quick"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("] 1/"));
  EXPECT_THAT(outcome.output, HasSubstr("libPXL    " + std::string(BLIT_DIGEST) + "  ok"));
}

TEST(Soak, ShowsHowFarItIsOnATerminal) {
  if (!HasPseudoTerminals()) GTEST_SKIP() << "no pseudo-terminal can be opened here";
  const Outcome outcome = RunPxlOnATerminal({"soak", "--minutes", "0.01"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_THAT(outcome.output, HasSubstr("] 0/1 s"));
}
