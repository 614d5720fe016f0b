// A fixture for K's memory: each test starts and ends with an empty pool, no
// budget and no scrambling, and keeps the reports.
#ifndef TESTS_STAND_INS_K_MEMORY_FIXTURE_H
#define TESTS_STAND_INS_K_MEMORY_FIXTURE_H

#include <gtest/gtest.h>

#include "K_host.h"
#include "tests/support/host/kept_reports.h"

class MemoryTest : public testing::Test {
 protected:
  MemoryTest() { Restore(); }
  ~MemoryTest() override {
    Restore();
    EXPECT_EQ(K_CountHandles(), 0U);
    EXPECT_EQ(Statistics().liveBlocks, 0U);
  }

  static K_PoolStatistics Statistics() {
    K_PoolStatistics statistics{};
    K_GetPoolStatistics(&statistics);
    return statistics;
  }

  // Null when the allocation is refused.
  static void* NewBlock(std::uint64_t size) {
    return K_GetRecycledPtrBaseAddress(K_AllocateRecycledPtr(0x70003, "PXL WORLD", size));
  }

  static Handle NewHandle(std::uint64_t size) {
    return K_AllocateHandleClear(0x70003, "thing", size);
  }

  // Sets a budget of the memory that K uses now and `bytes` more.
  static void AllowMore(std::uint64_t bytes) {
    K_MemoryTotals totals{};
    K_GetMemoryTotals(&totals);
    const auto booked = totals.application > 0 ? static_cast<std::uint64_t>(totals.application) : 0;
    K_SetMemoryBudget(Statistics().liveBytes + Statistics().keptBytes + booked + bytes);
  }

  KeptReports reports_;

 private:
  static void Restore() {
    K_SetScramble(0);
    K_SetMemoryBudget(0);
    K_SetPoolLimit(0);
    K_SetPoolLimit(K_DefaultPoolLimit);
  }
};

#endif
