// Tests of the totals of booked memory.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include "K_host.h"

namespace {

K_MemoryTotals Totals() {
  K_MemoryTotals totals{};
  K_GetMemoryTotals(&totals);
  return totals;
}

TEST(Accounting, AddsUpTwoTotalsWithTheirPeaks) {
  const K_MemoryTotals before = Totals();
  K_AccountAllocation(100);
  K_AccountSystemAllocation(2000);
  K_AccountAllocation(50);
  K_AccountAllocation(-150);
  K_AccountSystemAllocation(-2000);
  EXPECT_EQ(Totals().application, 0);
  EXPECT_EQ(Totals().system, 0);
  // Other tests may have booked more.
  EXPECT_EQ(Totals().applicationPeak, std::max(before.applicationPeak, std::int64_t{150}));
  EXPECT_EQ(Totals().systemPeak, std::max(before.systemPeak, std::int64_t{2000}));
}

TEST(Accounting, GoesBeyond32BitsAndBelowZero) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  for (int i = 0; i < 4; ++i) K_AccountAllocation(kMost);
  EXPECT_EQ(Totals().application, std::int64_t{4} * kMost);
  for (int i = 0; i < 5; ++i) K_AccountAllocation(-kMost);
  EXPECT_EQ(Totals().application, -std::int64_t{kMost});
  EXPECT_EQ(Totals().applicationPeak, std::int64_t{4} * kMost);
  K_AccountAllocation(kMost);
}

}  // namespace
