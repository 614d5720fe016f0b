// Tests of the memory budget.
#include "tests/stand_ins/K/memory_fixture.h"

namespace {

constexpr std::uint64_t kMiB = 1 << 20;

using Budget = MemoryTest;

TEST_F(Budget, IsNoneAtFirst) {
  EXPECT_EQ(K_GetMemoryBudget(), 0U);
}

TEST_F(Budget, CanBeReadBack) {
  K_SetMemoryBudget(12345);
  EXPECT_EQ(K_GetMemoryBudget(), 12345U);
}

TEST_F(Budget, RefusesAHandleBeyondItAndReports) {
  AllowMore(1000);
  const Handle first = NewHandle(900);
  ASSERT_NE(first, nullptr);
  EXPECT_TRUE(reports_.Take().empty());
  EXPECT_EQ(K_AllocateHandleClear(0x70003, "graphics structure\xD5", 101), nullptr);
  const Reports expected = {
      {0x70003, 8, 4, "not enough memory for graphics structure\u2019 (101 bytes)"}};
  EXPECT_EQ(reports_.Take(), expected);
  K_FreeHandle(first);
}

TEST_F(Budget, RefusesQuietHandlesQuietly) {
  AllowMore(1000);
  EXPECT_EQ(K_NewHandle(1001), nullptr);
  EXPECT_TRUE(reports_.Take().empty());
}

TEST_F(Budget, IsFreeAgainAfterAFree) {
  AllowMore(1000);
  K_FreeHandle(NewHandle(1000));
  const Handle again = NewHandle(1000);
  EXPECT_NE(again, nullptr);
  EXPECT_EQ(K_PurgeHandle(again), 1);
  const Handle other = NewHandle(1000);
  EXPECT_NE(other, nullptr);
  K_FreeHandle(again);
  K_FreeHandle(other);
}

TEST_F(Budget, RefusesAPoolBlockBeyondItQuietly) {
  AllowMore(kMiB);
  void* first = NewBlock(kMiB);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(NewBlock(1), nullptr);
  EXPECT_TRUE(reports_.Take().empty());
  K_FreeRecycledPtr(first);
}

TEST_F(Budget, CountsKeptBlocksUntilTheyAreReleased) {
  AllowMore(kMiB);
  K_FreeRecycledPtr(NewBlock(kMiB));
  EXPECT_EQ(NewBlock(kMiB / 2), nullptr);
  void* same = NewBlock(kMiB);
  EXPECT_NE(same, nullptr);
  K_FreeRecycledPtr(same);
  K_PurgeHandlesAndCompact();
  void* other = NewBlock(kMiB / 2);
  EXPECT_NE(other, nullptr);
  K_FreeRecycledPtr(other);
}

TEST_F(Budget, MakesAHandleTakeBackKeptBlocks) {
  AllowMore(kMiB);
  K_FreeRecycledPtr(NewBlock(kMiB));
  const Handle handle = NewHandle(kMiB / 2);
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(Statistics().keptBlocks, 0U);
  EXPECT_TRUE(reports_.Take().empty());
  K_FreeHandle(handle);
}

TEST_F(Budget, CountsBookedApplicationMemoryButNotSystemMemory) {
  AllowMore(1000);
  K_AccountSystemAllocation(5000);
  K_FreeHandle(NewHandle(1000));
  K_AccountAllocation(1);
  EXPECT_TRUE(reports_.Take().empty());
  EXPECT_EQ(NewHandle(1000), nullptr);
  EXPECT_EQ(reports_.Take().size(), 1U);
  K_AccountAllocation(-1);
  K_AccountSystemAllocation(-5000);
}

TEST_F(Budget, MayBeBelowWhatIsInUse) {
  const Handle handle = NewHandle(1000);
  K_SetMemoryBudget(1);
  EXPECT_EQ(K_NewHandle(1), nullptr);
  K_FreeHandle(handle);
  K_FreeHandle(NewHandle(1));
  EXPECT_TRUE(reports_.Take().empty());
}

TEST_F(Budget, RefusesSizesThatOverflowIt) {
  AllowMore(1000);
  EXPECT_EQ(K_NewHandle(~std::uint64_t{0}), nullptr);
  K_SetMemoryBudget(0);
  EXPECT_EQ(K_NewHandle(~std::uint64_t{0}), nullptr);
}

}  // namespace
