// Limits of process groups, which only Linux has.
#include "tests/support/host/group_files.h"
#include "tests/support/host/whole.h"

class GroupShortage : public Whole {};

TEST_F(GroupShortage, IsThatOfAnyOtherLimit) {
  const GroupFiles group("/container");
  group.Write("/container", "memory.max", 50 << 20);
  group.Write("/container", "memory.current", 10 << 20);
  group.Read();
  EXPECT_EQ(FailToMake(128, 1920, 1600), PXL_Err_NO_MEMORY);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70005U);
  K_MemoryRefusals refusals;
  K_GetMemoryRefusals(&refusals);
  EXPECT_EQ(refusals.last, K_MemoryLimit_GROUP);
  PXL_WorldHandle smaller = Make(128, 1920, 1080);
  ASSERT_NE(smaller, nullptr);
  Dispose(smaller);
}
