// pxl selftest: every processor level equals the plain loops.
#include <gmock/gmock.h>

#include <sstream>

#include "simd/processor_level.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/selftest_digests.h"

using testing::EndsWith;
using testing::StartsWith;

namespace {

std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

TEST(SelftestProgram, FindsEveryLevelOfThisProcessorEqual) {
  const Outcome outcome = RunPxl({"selftest", "--quick"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  const std::vector<std::string> lines = LinesOf(outcome.output);
  ASSERT_EQ(lines.size(), simd::kAllLevels.size() + 1);
  for (const simd::Level level : simd::kAllLevels) {
    const std::string& line = lines[static_cast<std::size_t>(level)];
    const bool here = level <= simd::ProcessorLevel();
    EXPECT_THAT(line, StartsWith(simd::NameOf(level)));
    EXPECT_THAT(line,
                EndsWith(here ? LEVEL_DIGEST + std::string("  ok") : "  not on this processor"));
  }
  EXPECT_EQ(lines.back(), "libPXL    " + std::string(BLIT_DIGEST) + "  ok");
}

TEST(SelftestProgram, TakesNothingElse) {
  const Outcome outcome = RunPxl({"selftest", "all"});
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.errors, "pxl: all: is not expected\n");
  EXPECT_EQ(outcome.output, "");
}
