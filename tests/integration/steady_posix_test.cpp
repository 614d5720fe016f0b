// Making and disposing of Worlds again and again must cost nothing of the
// system.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/integration/steady.h"
#include "tests/support/system/sanitizers.h"
#include "tests/support/system_use/system_use.h"

namespace {

constexpr bool kChecked = kAddressSanitizer || kThreadSanitizer;

long FaultsOfRounds() {
  const long before = PageFaults();
  EXPECT_TRUE(MakeAndDisposeOften());
  return PageFaults() - before;
}

// A freed handle rests until some hundreds of others were freed; until then the
// store grows.
bool WarmUp() {
  for (int i = 0; i < 1000; ++i) K_FreeHandle(K_AllocateHandleClear(0, "a handle of the test", 1));
  return MakeAndDisposeOften();
}

// The machine may take a page of the program away at any moment, so that one
// quiet run of three is enough.
TEST_F(SteadyWorlds, CauseNoPageFault) {
  if (kChecked) GTEST_SKIP() << "the checker's own memory comes and goes";
  EXPECT_TRUE(WarmUp());
  long faults = FaultsOfRounds();
  for (int more = 0; more < 2; ++more) faults = std::min(faults, FaultsOfRounds());
  EXPECT_EQ(faults, 0);
}

TEST_F(SteadyWorlds, CausePageFaultsWhenNothingIsKept) {
  K_SetPoolLimit(0);
  EXPECT_GT(FaultsOfRounds(), kRounds);
}

using SteadyWorldsDeathTest = SteadyWorlds;

TEST_F(SteadyWorldsDeathTest, CallTheSystemNotOnce) {
  if (kChecked) GTEST_SKIP() << "the checker calls the system";
  const QuietRun run = RunWithoutSystemCalls(WarmUp, MakeAndDisposeOften);
  if (run.quiet == Quiet::Unavailable) GTEST_SKIP() << "system calls cannot be forbidden here";
  EXPECT_EQ(run.quiet, Quiet::Yes) << "system call " << run.systemCall;
}

TEST_F(SteadyWorldsDeathTest, CallTheSystemWhenNothingIsKept) {
  if (kChecked) GTEST_SKIP() << "the checker calls the system";
  K_SetPoolLimit(0);
  const QuietRun run = RunWithoutSystemCalls(WarmUp, MakeAndDispose);
  if (run.quiet == Quiet::Unavailable) GTEST_SKIP() << "system calls cannot be forbidden here";
  EXPECT_EQ(run.quiet, Quiet::No);
  EXPECT_GE(run.systemCall, 0);
}

}  // namespace
