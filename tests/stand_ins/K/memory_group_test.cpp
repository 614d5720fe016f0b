// Tests of the memory limits of process groups, on files made by the test.
#include <gmock/gmock.h>

#include <limits>

#include "tests/stand_ins/K/memory_fixture.h"
#include "tests/support/host/group_files.h"

using testing::IsEmpty;

namespace {

constexpr std::uint64_t kMiB = 1 << 20;

class MemoryGroup : public MemoryTest {
 protected:
  static K_MemoryBudget InForce() {
    K_MemoryBudget budget{};
    K_GetMemoryBudgetInForce(&budget);
    return budget;
  }

  // The budget that the files result in when K uses nothing.
  std::uint64_t BudgetOfFiles() const {
    files_.Read();
    EXPECT_EQ(InForce().used, 0U);
    EXPECT_EQ(InForce().setBy, K_MemoryLimit_GROUP);
    return InForce().bytes;
  }

  void ExpectNoLimit() const {
    files_.Read();
    EXPECT_EQ(InForce().setBy, K_MemoryLimit_NONE);
    EXPECT_EQ(InForce().bytes, 0U);
    void* block = NewBlock(64 * kMiB);
    EXPECT_NE(block, nullptr);
    K_FreeRecycledPtr(block);
  }

  GroupFiles files_{"/slice/service"};
};

TEST_F(MemoryGroup, LimitsNothingWithoutFiles) {
  ExpectNoLimit();
}

TEST_F(MemoryGroup, LimitsNothingWhenAllIsMax) {
  for (const char* group : {"/slice/service", "/slice"}) {
    files_.Write(group, "memory.max", "max");
    files_.Write(group, "memory.high", "max");
    files_.Write(group, "memory.current", 5 * kMiB);
  }
  ExpectNoLimit();
}

TEST_F(MemoryGroup, LimitsNothingWithUnreadableNumbers) {
  for (const char* text : {"", "lots", "-5", "99999999999999999999999"}) {
    files_.Write("/slice/service", "memory.max", text);
    ExpectNoLimit();
  }
}

TEST_F(MemoryGroup, LimitsNothingWhenTheProcessIsInNone) {
  files_.Write("/slice/service", "memory.max", 1);
  files_.Write("", "memory.max", 1);
  for (const char* text : {"", "4:memory:/slice/service\n", "0::/../elsewhere\n", "0::"}) {
    files_.WriteMembership(text);
    ExpectNoLimit();
  }
}

TEST_F(MemoryGroup, LeavesWhatOthersDoNotUse) {
  files_.Write("/slice/service", "memory.max", 100 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 100 * kMiB);
  files_.Write("/slice/service", "memory.current", 30 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 70 * kMiB);
}

TEST_F(MemoryGroup, LeavesNothingWhenOthersUseMore) {
  files_.Write("/slice/service", "memory.max", 10 * kMiB);
  files_.Write("/slice/service", "memory.current", 11 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 0U);
  EXPECT_EQ(NewBlock(1), nullptr);
}

TEST_F(MemoryGroup, TakesTheLowerOfItsTwoLimits) {
  files_.Write("/slice/service", "memory.max", 100 * kMiB);
  files_.Write("/slice/service", "memory.high", 80 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 80 * kMiB);
  files_.Write("/slice/service", "memory.high", "max");
  EXPECT_EQ(BudgetOfFiles(), 100 * kMiB);
}

TEST_F(MemoryGroup, CountsThePagesOfFilesAsFree) {
  files_.Write("/slice/service", "memory.max", 100 * kMiB);
  files_.Write("/slice/service", "memory.current", 90 * kMiB);
  files_.Write("/slice/service", "memory.stat",
               "anon 1000\nfile 2000\ninactive_anon 7\nactive_file " + std::to_string(kMiB) +
                   "\ninactive_file " + std::to_string(4 * kMiB) + "\nunevictable 3");
  EXPECT_EQ(BudgetOfFiles(), 15 * kMiB);
}

TEST_F(MemoryGroup, IsBoundByTheGroupsAroundIt) {
  files_.Write("/slice/service", "memory.max", 100 * kMiB);
  files_.Write("/slice", "memory.max", 120 * kMiB);
  files_.Write("/slice", "memory.current", 90 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 30 * kMiB);
  files_.Write("", "memory.max", 20 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 20 * kMiB);
}

TEST_F(MemoryGroup, SkipsGroupsWithoutALimit) {
  files_.Write("/slice/service", "memory.max", "max");
  files_.Write("", "memory.max", 20 * kMiB);
  EXPECT_EQ(BudgetOfFiles(), 20 * kMiB);
}

TEST_F(MemoryGroup, MayBeTheRootOfTheTree) {
  files_.WriteMembership("9:name=systemd:/\n0::/\n");
  files_.Write("", "memory.max", 20 * kMiB);
  files_.Write("/slice/service", "memory.max", kMiB);
  EXPECT_EQ(BudgetOfFiles(), 20 * kMiB);
}

TEST_F(MemoryGroup, BoundsBlocksAndHandlesTogether) {
  files_.Write("/slice/service", "memory.max", 10 * kMiB);
  files_.Read();
  void* block = NewBlock(6 * kMiB);
  ASSERT_NE(block, nullptr);
  const Handle handle = NewHandle(3 * kMiB);
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(InForce().used, 9 * kMiB);
  EXPECT_EQ(NewBlock(2 * kMiB), nullptr);
  EXPECT_EQ(K_NewHandle(2 * kMiB), nullptr);
  K_FreeHandle(handle);
  void* second = NewBlock(2 * kMiB);
  EXPECT_NE(second, nullptr);
  K_FreeRecycledPtr(block);
  K_FreeRecycledPtr(second);
}

TEST_F(MemoryGroup, IsOverriddenByTheApplicationsBudget) {
  files_.Write("/slice/service", "memory.max", kMiB);
  files_.Read();
  K_SetMemoryBudget(8 * kMiB);
  EXPECT_EQ(InForce().setBy, K_MemoryLimit_BUDGET);
  EXPECT_EQ(InForce().bytes, 8 * kMiB);
  void* block = NewBlock(4 * kMiB);
  EXPECT_NE(block, nullptr);
  K_FreeRecycledPtr(block);
  K_SetMemoryBudget(0);
  EXPECT_EQ(InForce().setBy, K_MemoryLimit_GROUP);
}

TEST_F(MemoryGroup, IsSetAsideByABudgetBeyondAll) {
  files_.Write("/slice/service", "memory.max", kMiB);
  files_.Read();
  K_SetMemoryBudget(std::numeric_limits<std::uint64_t>::max());
  void* block = NewBlock(4 * kMiB);
  EXPECT_NE(block, nullptr);
  K_FreeRecycledPtr(block);
}

TEST_F(MemoryGroup, IsReadAgainBeforeARefusal) {
  files_.Write("/slice/service", "memory.max", 64 * kMiB);
  files_.Write("/slice/service", "memory.current", 63 * kMiB);
  files_.Read();
  EXPECT_EQ(NewBlock(2 * kMiB), nullptr);
  files_.Write("/slice/service", "memory.current", 10 * kMiB);
  void* block = NewBlock(2 * kMiB);
  EXPECT_NE(block, nullptr);
  K_FreeRecycledPtr(block);
}

TEST_F(MemoryGroup, IsReadAgainWhenMuchMoreIsUsed) {
  files_.Write("/slice/service", "memory.max", 64 * kMiB);
  files_.Read();
  // Another process of the group uses most of it.
  files_.Write("/slice/service", "memory.current", 62 * kMiB);
  EXPECT_EQ(InForce().bytes, 64 * kMiB);
  EXPECT_EQ(NewBlock(4 * kMiB), nullptr);
  EXPECT_EQ(InForce().bytes, 2 * kMiB);
}

TEST_F(MemoryGroup, DoesNotCountKsOwnMemoryAsThatOfOthers) {
  files_.Write("/slice/service", "memory.max", 64 * kMiB);
  files_.Read();
  void* block = NewBlock(32 * kMiB);
  ASSERT_NE(block, nullptr);
  files_.Write("/slice/service", "memory.current", 40 * kMiB);
  files_.Read();
  EXPECT_EQ(InForce().bytes, 56 * kMiB);
  K_FreeRecycledPtr(block);
}

TEST_F(MemoryGroup, LetsThePurgeLoopFindWhatIsKept) {
  files_.Write("/slice/service", "memory.max", 8 * kMiB);
  files_.Read();
  K_FreeRecycledPtr(NewBlock(6 * kMiB));
  const Handle handle = NewHandle(4 * kMiB);
  EXPECT_NE(handle, nullptr);
  EXPECT_EQ(Statistics().keptBytes, 0U);
  EXPECT_THAT(reports_.Take(), IsEmpty());
  K_FreeHandle(handle);
}

TEST_F(MemoryGroup, IsNotReadFromAFolderWithTooLongAName) {
  files_.Write("/slice/service", "memory.max", kMiB);
  files_.Read();
  EXPECT_EQ(K_ReadMemoryGroup(std::string(1024, 'x').c_str()), 0);
  EXPECT_EQ(InForce().bytes, kMiB);
  EXPECT_EQ(K_ReadMemoryGroup(std::string(1023, 'x').c_str()), 1);
  EXPECT_EQ(InForce().setBy, K_MemoryLimit_NONE);
}

}  // namespace
