// Refusals by limits of process groups, which only Linux has.
#include <gmock/gmock.h>

#include "tests/stand_ins/K/refusals_fixture.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

TEST_F(Refused, ByTheGroup) {
  group_.Write("/group", "memory.max", kMiB);
  group_.Read();
  EXPECT_EQ(K_NewHandle(2 * kMiB), nullptr);
  EXPECT_EQ(Refusals().last, K_MemoryLimit_GROUP);
  EXPECT_EQ(Refusals().byGroup, before_.byGroup + 1);
  EXPECT_EQ(Refusals().byBudget, before_.byBudget);
  EXPECT_THAT(log_, ElementsAre(HasSubstr("the memory limit of the process group refuses")));
}

}  // namespace
