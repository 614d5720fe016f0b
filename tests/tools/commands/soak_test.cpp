// Random calls on many Worlds.
#include <gmock/gmock.h>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class SoakProgram : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  void ExpectUsageError(const std::vector<std::string>& options, const std::string& line) {
    std::vector<std::string> arguments = {"soak"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.errors, "pxl: " + line + "\n");
    EXPECT_EQ(outcome.output, "");
  }

  TemporaryFolder folder_;
};

// The number after the name.
int NumberOf(const std::string& output, const std::string& name) {
  const std::size_t place = output.find("  " + name + " ");
  if (place == std::string::npos) return -1;
  return std::stoi(output.substr(place + name.size() + 2));
}

}  // namespace

TEST_F(SoakProgram, EndsWithAllTotalsWhereTheyBegan) {
  const Outcome outcome = RunPxl({"soak", "--minutes", "0.03", "--seed", "7"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_THAT(outcome.output, StartsWith("Worlds, with --seed 7\n"));
  for (const std::string total :
       {"handles", "surfaces", "pool blocks", "application bytes", "system bytes"}) {
    EXPECT_THAT(outcome.output, ContainsRegex("  " + total + " +0 -> 0\n"));
  }
  EXPECT_GT(NumberOf(outcome.output, "made"), 0);
  EXPECT_EQ(NumberOf(outcome.output, "made"), NumberOf(outcome.output, "disposed of"));
  EXPECT_GT(NumberOf(outcome.output, "locked"), 0);
  EXPECT_GT(NumberOf(outcome.output, "drawn"), 0);
}

TEST_F(SoakProgram, LivesWithTooLittleMemory) {
  const Outcome outcome = RunPxl({"soak", "--minutes", "0.05", "--seed", "7", "--budget", "8MiB"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_GT(NumberOf(outcome.output, "lack of memory"), 0);
  EXPECT_GT(NumberOf(outcome.output, "refusals"), 0);
}

TEST_F(SoakProgram, ShortRunsHaveNoRounds) {
  const Outcome outcome = RunPxl({"soak", "--minutes", "0.01", "--seed", "7"});
  EXPECT_THAT(outcome.output, testing::Not(HasSubstr("rounds")));
}

TEST_F(SoakProgram, DrawsItsMemory) {
  const Outcome outcome =
      RunPxl({"soak", "--minutes", "0.01", "--budget", "64MiB", "--plot", Path("memory.svg")});
  EXPECT_EQ(outcome.code, 0);
  const std::string svg = ReadBytes(folder_ / "memory.svg");
  EXPECT_THAT(svg, StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\""));
  EXPECT_THAT(svg, HasSubstr(">budget</text>"));
  EXPECT_THAT(svg, testing::EndsWith("</svg>\n"));
  EXPECT_THAT(folder_.Names(), ElementsAre("memory.svg"));
}

TEST_F(SoakProgram, RefusesWhatCannotBeMeant) {
  ExpectUsageError({}, "--minutes: is required");
  ExpectUsageError({"--minutes", "0.01", "--seed", "-1"}, "--seed: -1 is not a whole number");
  ExpectUsageError({"--minutes", "0.01", "--plot", Path("memory.png")},
                   Path("memory.png") + ": the ending must be .svg");
  for (const std::string minutes : {"0", "-1", "soon", "nan"}) {
    const Outcome outcome = RunPxl({"soak", "--minutes", minutes});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: --minutes: ")) << outcome.errors;
  }
  const Outcome budget = RunPxl({"soak", "--minutes", "0.01", "--budget", "much"});
  EXPECT_EQ(budget.code, 2);
  EXPECT_TRUE(IsOneLine(budget.errors, "pxl: --budget: ")) << budget.errors;
  const Outcome plot = RunPxl({"soak", "--minutes", "0.01", "--plot", Path("missing/memory.svg")});
  EXPECT_EQ(plot.code, 1);
  EXPECT_THAT(folder_.Names(), IsEmpty());
}
