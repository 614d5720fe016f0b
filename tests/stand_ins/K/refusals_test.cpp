// Tests of the counts and log lines of refused allocations.
#include <gmock/gmock.h>

#include "tests/stand_ins/K/refusals_fixture.h"

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

// No system maps as much, and rounding it up does not overflow.
constexpr std::uint64_t kBeyondAll = std::uint64_t{1} << 47;

TEST_F(Refused, ByTheBudget) {
  AllowMore(kMiB);
  EXPECT_EQ(NewBlock(2 * kMiB), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_BUDGET);
  EXPECT_EQ(Refusals().lastBytes, 2 * kMiB);
  EXPECT_EQ(Refusals().byBudget, before_.byBudget + 1);
  EXPECT_THAT(log_,
              ElementsAre("K refusal: the application's memory budget refuses 2097152 bytes; 0 are "
                          "in use, the budget is 1048576"));
}

TEST_F(Refused, ByTheSystemForABlock) {
  EXPECT_EQ(NewBlock(kBeyondAll), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_SYSTEM);
  EXPECT_EQ(Refusals().lastBytes, kBeyondAll);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 1);
  EXPECT_THAT(log_, ElementsAre(AllOf(HasSubstr("the system refuses"), HasSubstr("is 0"))));
}

TEST_F(Refused, ByTheSystemForSizesBeyondAllSystems) {
  EXPECT_EQ(NewBlock(~std::uint64_t{0}), nullptr);
  EXPECT_EQ(K_NewHandle(~std::uint64_t{0}), nullptr);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 2);
}

TEST_F(Refused, NotWhenMemoryIsThere) {
  K_FreeRecycledPtr(NewBlock(kMiB));
  K_FreeHandle(NewHandle(100));
  EXPECT_EQ(Refusals().byBudget, before_.byBudget);
  EXPECT_EQ(Refusals().byGroup, before_.byGroup);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem);
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(Refused, SilentlyBelowTheLogsLevel) {
  TRC_SetLevel(TRC_Level_PROBLEM);
  EXPECT_EQ(NewBlock(kBeyondAll), nullptr);
  EXPECT_EQ(Refusals().bySystem, before_.bySystem + 1);
  EXPECT_THAT(log_, IsEmpty());
}

}  // namespace
