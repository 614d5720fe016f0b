// A host that renders frame after frame makes and disposes of Worlds of one
// size again and again. That must cost nothing of the system.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/host/sanitizers.h"
#include "tests/whole/system_use.h"
#include "tests/whole/whole.h"

namespace {

constexpr int kRounds = 40;
constexpr bool kChecked = kAddressSanitizer || kThreadSanitizer;

// Touches every page of the frame.
bool MakeAndDispose() {
  const Rect rect{0, 0, 1080, 1920};
  PXL_WorldHandle worldH = nullptr;
  if (PXL_NewWorld(nullptr, PXL_Flag_CLEAR, &rect, 128, 0, nullptr, &worldH) != 0) return false;
  bool good = PXL_LockPixels(0, worldH, nullptr) == 0;
  PXL_UnlockPixels(worldH);
  good = good && K_IsRecycledPtr(Record(worldH).pixels.frame) != 0;
  return PXL_DisposeWorld(worldH) == 0 && good;
}

bool MakeAndDisposeOften() {
  for (int round = 0; round < kRounds; ++round) {
    if (!MakeAndDispose()) return false;
  }
  return true;
}

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

// With the host's own settings: nothing is moved on purpose.
class SteadyWorlds : public Whole {
 protected:
  SteadyWorlds() {
    K_SetScramble(0);
    K_SetPoolLimit(0);
    K_SetPoolLimit(K_DefaultPoolLimit);
  }
  ~SteadyWorlds() override { K_SetPoolLimit(K_DefaultPoolLimit); }
};

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

TEST_F(SteadyWorlds, MissThePoolOnlyOnce) {
  K_PoolStatistics before{};
  K_GetPoolStatistics(&before);
  EXPECT_TRUE(MakeAndDisposeOften());
  K_PoolStatistics after{};
  K_GetPoolStatistics(&after);
  EXPECT_EQ(after.misses - before.misses, 1U);
  EXPECT_EQ(after.hits - before.hits, std::uint64_t{kRounds - 1});
}

}  // namespace
