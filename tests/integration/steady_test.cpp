// The pool while Worlds of one size come and go.
#include "tests/integration/steady.h"

#include <gtest/gtest.h>

TEST_F(SteadyWorlds, MissThePoolOnlyOnce) {
  K_PoolStatistics before{};
  K_GetPoolStatistics(&before);
  EXPECT_TRUE(MakeAndDisposeOften());
  K_PoolStatistics after{};
  K_GetPoolStatistics(&after);
  EXPECT_EQ(after.misses - before.misses, 1U);
  EXPECT_EQ(after.hits - before.hits, std::uint64_t{kRounds - 1});
}
