// Tests of the pool of recycled pointers.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "tests/stand_ins/K/memory_fixture.h"

namespace {

constexpr std::uint64_t kMiB = 1 << 20;

using RecycledPtr = MemoryTest;

TEST_F(RecycledPtr, StartsOnAPage) {
  for (const std::uint64_t size :
       {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{307201}, 33 * kMiB}) {
    void* base = NewBlock(size);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(base) % 4096, 0U);
    std::memset(base, 0x5A, size);
    K_FreeRecycledPtr(base);
  }
}

TEST_F(RecycledPtr, IsNullForNull) {
  EXPECT_EQ(K_GetRecycledPtrBaseAddress(nullptr), nullptr);
  K_FreeRecycledPtr(nullptr);
  EXPECT_TRUE(reports_.Take().empty());
}

TEST_F(RecycledPtr, KeepsItsReferenceApartFromItsMemory) {
  const K_RecycledPtrRef ref = K_AllocateRecycledPtr(1, "label", 8192);
  void* base = K_GetRecycledPtrBaseAddress(ref);
  std::memset(base, 0xFF, 8192);
  EXPECT_EQ(K_GetRecycledPtrBaseAddress(ref), base);
  K_FreeRecycledPtr(base);
}

TEST_F(RecycledPtr, TakesNoLabel) {
  const K_RecycledPtrRef ref = K_AllocateRecycledPtr(1, nullptr, 8192);
  ASSERT_NE(ref, nullptr);
  K_FreeRecycledPtr(K_GetRecycledPtrBaseAddress(ref));
}

TEST_F(RecycledPtr, IsKnownByItsAddressWhileItLives) {
  void* base = NewBlock(8192);
  EXPECT_EQ(K_IsRecycledPtr(base), 1);
  EXPECT_EQ(K_IsRecycledPtr(static_cast<char*>(base) + 16), 0);
  EXPECT_EQ(K_IsRecycledPtr(nullptr), 0);
  K_FreeRecycledPtr(base);
  EXPECT_EQ(K_IsRecycledPtr(base), 0);
}

TEST_F(RecycledPtr, IsReusedForTheSameSize) {
  void* first = NewBlock(5 * kMiB);
  K_FreeRecycledPtr(first);
  const K_PoolStatistics before = Statistics();
  EXPECT_EQ(before.keptBlocks, 1U);
  void* second = NewBlock(5 * kMiB);
  EXPECT_EQ(second, first);
  EXPECT_EQ(Statistics().hits, before.hits + 1);
  EXPECT_EQ(Statistics().keptBlocks, 0U);
  K_FreeRecycledPtr(second);
}

TEST_F(RecycledPtr, IsReusedForNearlyTheSameSize) {
  void* first = NewBlock(5 * kMiB);
  K_FreeRecycledPtr(first);
  void* second = NewBlock(5 * kMiB - 100000);
  EXPECT_EQ(second, first);
  K_FreeRecycledPtr(second);
}

TEST_F(RecycledPtr, IsNotReusedForMuchSmallerOrForLargerSizes) {
  void* large = NewBlock(8 * kMiB);
  K_FreeRecycledPtr(large);
  const std::uint64_t misses = Statistics().misses;
  void* small = NewBlock(4 * kMiB);
  void* larger = NewBlock(9 * kMiB);
  EXPECT_EQ(Statistics().misses, misses + 2);
  EXPECT_EQ(Statistics().keptBlocks, 1U);
  K_FreeRecycledPtr(small);
  K_FreeRecycledPtr(larger);
}

TEST_F(RecycledPtr, WastesAtMostAnEighthOfALargeBlock) {
  for (std::uint64_t size = 40000; size < 100 * kMiB; size += size / 7) {
    void* base = NewBlock(size);
    EXPECT_GE(Statistics().liveBytes, size);
    EXPECT_LE(Statistics().liveBytes, size + size / 8);
    K_FreeRecycledPtr(base);
    K_SetPoolLimit(0);
  }
}

TEST_F(RecycledPtr, WastesAtMostAQuarterMoreWhenReUsed) {
  std::mt19937 random(7);
  std::uint64_t reUsed = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::uint64_t size = 40000 + random() % kMiB;
    const std::uint64_t hits = Statistics().hits;
    void* base = NewBlock(size);
    reUsed += Statistics().hits - hits;
    EXPECT_GE(Statistics().liveBytes, size);
    EXPECT_LE(Statistics().liveBytes, (size + size / 8) * 5 / 4);
    K_FreeRecycledPtr(base);
    K_SetPoolLimit(4 * kMiB);
  }
  EXPECT_GT(reUsed, 500U);
}

TEST_F(RecycledPtr, TakesALabelOfAnyLength) {
  const std::string label(1000, 'x');
  const K_RecycledPtrRef ref = K_AllocateRecycledPtr(1, label.c_str(), 8192);
  ASSERT_NE(ref, nullptr);
  K_FreeRecycledPtr(K_GetRecycledPtrBaseAddress(ref));
}

TEST_F(RecycledPtr, IsReleasedByAPurge) {
  void* live = NewBlock(kMiB);
  K_FreeRecycledPtr(NewBlock(kMiB));
  K_FreeRecycledPtr(NewBlock(5 * kMiB));
  K_PurgeHandlesAndCompact();
  EXPECT_EQ(Statistics().keptBytes, 0U);
  EXPECT_EQ(Statistics().liveBytes, kMiB);
  K_FreeRecycledPtr(live);
}

TEST_F(RecycledPtr, CountsBlocksAndBytes) {
  void* a = NewBlock(kMiB);
  void* b = NewBlock(kMiB);
  K_FreeRecycledPtr(a);
  const K_PoolStatistics statistics = Statistics();
  EXPECT_EQ(statistics.liveBlocks, 1U);
  EXPECT_EQ(statistics.liveBytes, kMiB);
  EXPECT_EQ(statistics.keptBlocks, 1U);
  EXPECT_EQ(statistics.keptBytes, kMiB);
  EXPECT_GE(statistics.peakBytes, 2 * kMiB);
  K_FreeRecycledPtr(b);
}

TEST_F(RecycledPtr, IsKeptWithinTheLimitTheOldestLeavingFirst) {
  K_SetPoolLimit(2 * kMiB);
  void* blocks[3] = {NewBlock(kMiB), NewBlock(kMiB), NewBlock(kMiB)};
  for (void* block : blocks) K_FreeRecycledPtr(block);
  EXPECT_EQ(Statistics().keptBytes, 2 * kMiB);
  void* newest = NewBlock(kMiB);
  void* middle = NewBlock(kMiB);
  EXPECT_EQ(newest, blocks[2]);
  EXPECT_EQ(middle, blocks[1]);
  EXPECT_EQ(Statistics().keptBlocks, 0U);
  K_FreeRecycledPtr(newest);
  K_FreeRecycledPtr(middle);
}

TEST_F(RecycledPtr, DoesNotPushOthersOutWhenTooLargeToBeKept) {
  K_SetPoolLimit(2 * kMiB);
  void* small = NewBlock(kMiB);
  void* large = NewBlock(3 * kMiB);
  K_FreeRecycledPtr(small);
  K_FreeRecycledPtr(large);
  EXPECT_EQ(Statistics().keptBytes, kMiB);
}

TEST_F(RecycledPtr, FollowsALowerLimitAtOnce) {
  void* a = NewBlock(kMiB);
  void* b = NewBlock(2 * kMiB);
  K_FreeRecycledPtr(a);
  K_FreeRecycledPtr(b);
  EXPECT_EQ(K_GetPoolLimit(), std::uint64_t{K_DefaultPoolLimit});
  K_SetPoolLimit(2 * kMiB);
  EXPECT_EQ(K_GetPoolLimit(), 2 * kMiB);
  EXPECT_EQ(Statistics().keptBytes, 2 * kMiB);
  K_SetPoolLimit(0);
  EXPECT_EQ(Statistics().keptBytes, 0U);
}

TEST_F(RecycledPtr, ReportsAForeignAddressAndLeavesItAlone) {
  auto* foreign = static_cast<char*>(std::malloc(400000));
  foreign[0] = 17;
  K_FreeRecycledPtr(foreign);
  const Reports reports = reports_.Take();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].code, std::uint32_t{K_Code_ADDRESS});
  EXPECT_EQ(reports[0].cls, K_ReportClass_ERROR);
  EXPECT_EQ(foreign[0], 17);
  std::free(foreign);
}

TEST_F(RecycledPtr, ReportsAnAddressFreedTwiceOrOffItsStart) {
  auto* base = static_cast<char*>(NewBlock(8192));
  K_FreeRecycledPtr(base + 4096);
  EXPECT_EQ(reports_.Take().size(), 1U);
  EXPECT_EQ(K_IsRecycledPtr(base), 1);
  K_FreeRecycledPtr(base);
  K_FreeRecycledPtr(base);
  EXPECT_EQ(reports_.Take().size(), 1U);
}

TEST_F(RecycledPtr, IsNullWhenTheSystemHasNoMore) {
  EXPECT_EQ(K_AllocateRecycledPtr(1, "too large", ~std::uint64_t{0}), nullptr);
  EXPECT_EQ(K_AllocateRecycledPtr(1, "too large", std::uint64_t{1} << 47), nullptr);
  EXPECT_EQ(Statistics().liveBlocks, 0U);
}

// Marks a block at both ends and checks later that no other thread wrote there.
bool UseBlock(std::uint64_t size, std::uint64_t mark) {
  auto* base = static_cast<char*>(K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(1, "t", size)));
  if (base == nullptr) return false;
  std::memcpy(base, &mark, sizeof mark);
  std::memcpy(base + size - sizeof mark, &mark, sizeof mark);
  std::this_thread::yield();
  const bool own = std::memcmp(base, &mark, sizeof mark) == 0 &&
                   std::memcmp(base + size - sizeof mark, &mark, sizeof mark) == 0;
  K_FreeRecycledPtr(base);
  return own;
}

TEST_F(RecycledPtr, ServesManyThreadsAtOnce) {
  K_SetPoolLimit(4 * kMiB);
  constexpr std::uint64_t kThreads = 4;
  std::vector<std::thread> threads;
  std::vector<int> good(kThreads);
  for (std::uint64_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([t, &good] {
      std::mt19937 random(static_cast<unsigned>(t));
      for (std::uint64_t n = 0; n < 500; ++n) {
        good[t] += UseBlock(4096 + random() % kMiB, t << 32 | n) ? 1 : 0;
        if (n % 50 == 0) K_SetPoolLimit((1 + n % 3) * kMiB);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, std::vector<int>(kThreads, 500));
  EXPECT_GT(Statistics().hits, 0U);
  EXPECT_LE(Statistics().keptBytes, 3 * kMiB);
  EXPECT_TRUE(reports_.Take().empty());
}

}  // namespace
