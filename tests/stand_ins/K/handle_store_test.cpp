// Tests of handles: allocation, locks, purging.
#include <algorithm>
#include <cstring>
#include <set>
#include <thread>
#include <vector>

#include "tests/stand_ins/K/memory_fixture.h"

namespace {

using HandleStore = MemoryTest;

TEST_F(HandleStore, AllocatesZeroFilledBlocks) {
  const Handle handle = NewHandle(4096);
  ASSERT_NE(handle, nullptr);
  EXPECT_TRUE(std::all_of(*handle, *handle + 4096, [](char c) { return c == 0; }));
  EXPECT_EQ(K_GetHandleSize(handle), 4096U);
  EXPECT_TRUE(reports_.Take().empty());
  K_FreeHandle(handle);
}

TEST_F(HandleStore, AllocatesABlockEvenForSizeZero) {
  const Handle handle = NewHandle(0);
  ASSERT_NE(handle, nullptr);
  EXPECT_NE(*handle, nullptr);
  K_FreeHandle(handle);
}

TEST_F(HandleStore, MakesEmptyHandles) {
  const Handle handle = K_NewEmptyHandle();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(*handle, nullptr);
  EXPECT_EQ(K_GetHandleSize(handle), 0U);
  EXPECT_EQ(K_PurgeHandle(handle), 0);
  K_FreeHandle(handle);
}

TEST_F(HandleStore, KnowsItsHandlesAndTheirLocks) {
  const Handle handle = K_NewHandle(8);
  EXPECT_EQ(K_IsHandle(handle), 1);
  EXPECT_EQ(K_IsHandleLocked(handle), 0);
  K_LockHandle(handle);
  EXPECT_EQ(K_IsHandleLocked(handle), 1);
  EXPECT_EQ(K_IsHandle(*handle), 0);
  K_FreeHandle(handle);
  EXPECT_EQ(K_IsHandle(handle), 0);
  EXPECT_EQ(K_IsHandleLocked(handle), 0);
  EXPECT_EQ(K_IsHandle(nullptr), 0);
  EXPECT_EQ(K_IsHandleLocked(nullptr), 0);
}

TEST_F(HandleStore, CountsItsHandles) {
  const Handle a = NewHandle(1);
  const Handle b = K_NewEmptyHandle();
  const Handle c = K_NewHandle(1);
  EXPECT_EQ(K_CountHandles(), 3U);
  for (const Handle handle : {a, b, c}) K_FreeHandle(handle);
  EXPECT_EQ(K_CountHandles(), 0U);
}

TEST_F(HandleStore, KeepsMasterPointersApartAndInPlace) {
  std::vector<Handle> handles;
  for (int i = 0; i < 2000; ++i) handles.push_back(NewHandle(sizeof(int)));
  for (int i = 0; i < 2000; ++i) std::memcpy(*handles[static_cast<std::size_t>(i)], &i, sizeof i);
  for (int i = 0; i < 2000; ++i) {
    int value = -1;
    std::memcpy(&value, *handles[static_cast<std::size_t>(i)], sizeof value);
    EXPECT_EQ(value, i);
  }
  EXPECT_EQ(std::set<Handle>(handles.begin(), handles.end()).size(), handles.size());
  for (const Handle handle : handles) K_FreeHandle(handle);
}

// Among many handles, so that master pointers lie before and behind the tested ones.
TEST_F(HandleStore, KnowsOnlyTheVeryAddressesOfItsMasterPointers) {
  std::vector<Handle> handles;
  for (int i = 0; i < 5000; ++i) handles.push_back(NewHandle(1));
  for (const Handle handle : handles) {
    EXPECT_EQ(K_IsHandle(handle), 1);
    char* address = reinterpret_cast<char*>(handle);
    for (const int offset : {-8, -1, 1, 8, 16, 24}) EXPECT_EQ(K_IsHandle(address + offset), 0);
  }
  for (const Handle handle : handles) K_FreeHandle(handle);
  for (const Handle handle : handles) EXPECT_EQ(K_IsHandle(handle), 0);
}

TEST_F(HandleStore, TakesNullToBeFreed) {
  K_FreeHandle(nullptr);
  EXPECT_TRUE(reports_.Take().empty());
}

TEST_F(HandleStore, ReportsAHandleFreedTwiceAndLeavesItAlone) {
  const Handle handle = NewHandle(16);
  K_FreeHandle(handle);
  EXPECT_EQ(*handle, nullptr);
  const Handle other = NewHandle(16);
  K_FreeHandle(handle);
  const Reports reports = reports_.Take();
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(reports[0].code, std::uint32_t{K_Code_HANDLE});
  EXPECT_EQ(reports[0].cls, K_ReportClass_ERROR);
  EXPECT_EQ(K_CountHandles(), 1U);
  K_FreeHandle(other);
}

TEST_F(HandleStore, DoesNotSoonReuseAFreedMasterPointer) {
  const Handle freed = NewHandle(1);
  K_FreeHandle(freed);
  std::vector<Handle> handles;
  for (int i = 0; i < 5000; ++i) handles.push_back(NewHandle(1));
  EXPECT_EQ(std::count(handles.begin(), handles.end(), freed), 0);
  for (const Handle handle : handles) K_FreeHandle(handle);
}

TEST_F(HandleStore, ReportsAForeignHandleAndLeavesItAlone) {
  char bytes[4] = {1, 2, 3, 4};
  Ptr master = bytes;
  K_FreeHandle(&master);
  EXPECT_EQ(reports_.Take().size(), 1U);
  EXPECT_EQ(master, bytes);
  K_LockHandle(&master);
  K_UnlockHandle(&master);
  K_SetHandlePurgeable(&master, 1);
  EXPECT_EQ(K_PurgeHandle(&master), 0);
  EXPECT_EQ(K_GetHandleSize(&master), 0U);
  EXPECT_EQ(master, bytes);
}

TEST_F(HandleStore, PurgesUnlockedBlocksOnRequest) {
  const Handle handle = NewHandle(16);
  K_LockHandle(handle);
  EXPECT_EQ(K_PurgeHandle(handle), 0);
  EXPECT_NE(*handle, nullptr);
  K_UnlockHandle(handle);
  EXPECT_EQ(K_PurgeHandle(handle), 1);
  EXPECT_EQ(*handle, nullptr);
  EXPECT_EQ(K_GetHandleSize(handle), 0U);
  EXPECT_EQ(K_CountHandles(), 1U);
  K_FreeHandle(handle);
}

TEST_F(HandleStore, TakesPurgeableBlocksWhenCompacting) {
  const Handle purgeable = NewHandle(16);
  const Handle locked = NewHandle(16);
  const Handle kept = NewHandle(16);
  K_SetHandlePurgeable(purgeable, 1);
  K_SetHandlePurgeable(locked, 1);
  K_LockHandle(locked);
  K_PurgeHandlesAndCompact();
  EXPECT_EQ(*purgeable, nullptr);
  EXPECT_NE(*locked, nullptr);
  EXPECT_NE(*kept, nullptr);
  for (const Handle handle : {purgeable, locked, kept}) K_FreeHandle(handle);
}

TEST_F(HandleStore, SparesBlocksThatArePurgeableNoMore) {
  const Handle handle = NewHandle(16);
  K_SetHandlePurgeable(handle, 1);
  K_SetHandlePurgeable(handle, 0);
  K_PurgeHandlesAndCompact();
  EXPECT_NE(*handle, nullptr);
  K_FreeHandle(handle);
}

TEST_F(HandleStore, ServesManyThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < 1000; ++n) {
        const Handle handle = NewHandle(static_cast<std::uint64_t>(n % 100));
        K_LockHandle(handle);
        K_UnlockHandle(handle);
        K_FreeHandle(handle);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(reports_.Take().empty());
}

}  // namespace
