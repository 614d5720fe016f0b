// The counts of K and QDE.
#include "tests/support/host/leak_check.h"

#include <gtest/gtest.h>

#include "K_host.h"
#include "QDE_host.h"

std::ostream& operator<<(std::ostream& stream, const Holdings& holdings) {
  return stream << holdings.handles << " handles, " << holdings.poolBlocks << " blocks, "
                << holdings.surfaces << " surfaces, " << holdings.applicationBytes << " and "
                << holdings.systemBytes << " bytes booked";
}

Holdings CurrentHoldings() {
  K_PoolStatistics pool;
  K_GetPoolStatistics(&pool);
  K_MemoryTotals totals;
  K_GetMemoryTotals(&totals);
  return {.handles = K_CountHandles(),
          .poolBlocks = pool.liveBlocks,
          .surfaces = QDE_CountWorlds(),
          .applicationBytes = totals.application,
          .systemBytes = totals.system};
}

LeakCheck::~LeakCheck() {
  EXPECT_EQ(CurrentHoldings(), before_) << "a test has to leave what it found";
}
