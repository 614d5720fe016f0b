// Every allocation of the module and of its stand-in host, in every call of the
// module, failing: alone, with the one after it, and with all that follow.
#include <cstdio>
#include <map>

#include "tests/out_of_memory/stage.h"
#include "tests/support/memory/scarce_memory.h"

namespace {

enum class Extent { One, Neighbours, Rest };

constexpr Extent kExtents[] = {Extent::One, Extent::Neighbours, Extent::Rest};

std::int64_t CountIn(Extent extent) {
  if (extent == Extent::Rest) return scarce::kAll;
  return extent == Extent::One ? 1 : 2;
}

// How much was tried, printed at the end.
struct Numbers {
  int scenarios = 0;
  std::map<Extent, int> points;
  std::map<std::int32_t, int> statuses;
};
Numbers numbers;

class PrintedNumbers : public ::testing::Environment {
  void SetUp() override { PXL_Birth(0); }
  void TearDown() override {
    PXL_Death();
    std::printf("%d calls: %d allocations failed, %d pairs of neighbours, %d with all after them\n",
                numbers.scenarios, numbers.points[Extent::One], numbers.points[Extent::Neighbours],
                numbers.points[Extent::Rest]);
    for (const auto& [status, count] : numbers.statuses) {
      std::printf("status %d came of %d of them\n", status, count);
    }
  }
};
const ::testing::Environment* const kPrintedNumbers =
    ::testing::AddGlobalTestEnvironment(new PrintedNumbers);

}  // namespace

class EveryAllocation : public ::testing::TestWithParam<Scenario> {
 protected:
  static bool Try(std::int64_t successes, std::int64_t failures);
  static void TryAll(Extent extent);
};

// Stores of the host grow now and then: only a count that grows with each call is
// a leak.
void ExpectNoLoss(const Scenario& scenario, FailingAllocations& injected) {
  constexpr int kTimes = 5;
  const std::int64_t before = scarce::LiveBlocks();
  for (int i = 0; i < kTimes; ++i) Play(scenario, injected);
  EXPECT_LT(scarce::LiveBlocks(), before + kTimes);
}

// False when there are no more allocations to fail.
bool EveryAllocation::Try(std::int64_t successes, std::int64_t failures) {
  SCOPED_TRACE(::testing::Message() << failures << " after " << successes);
  FailingAllocations injected(successes, failures);
  const std::int64_t before = scarce::LiveBlocks();
  const Played played = Play(GetParam(), injected);
  if (scarce::LiveBlocks() > before) ExpectNoLoss(GetParam(), injected);
  if (played.failures == 0) return false;
  ++numbers.statuses[played.status];
  return true;
}

void EveryAllocation::TryAll(Extent extent) {
  for (std::int64_t successes = 0; Try(successes, CountIn(extent)); ++successes) {
    ++numbers.points[extent];
    if (HasFailure()) return;
  }
}

TEST_P(EveryAllocation, MayFail) {
  ++numbers.scenarios;
  // The first call allocates what the host keeps.
  FailingAllocations none(0, 0);
  Play(GetParam(), none);
  for (const Extent extent : kExtents) TryAll(extent);
}

INSTANTIATE_TEST_SUITE_P(In, EveryAllocation, ::testing::ValuesIn(AllScenarios()),
                         [](const auto& tested) { return tested.param.name; });
