// Handles in the store of K.
#include <gtest/gtest.h>

#include "K_host.h"
#include "QDE_host.h"

namespace {

TEST(QDEHandles, LiveInTheStoreOfK) {
  const std::uint64_t before = K_CountHandles();
  const Handle handle = NewEmptyHandle();
  ASSERT_NE(handle, nullptr);
  EXPECT_EQ(*handle, nullptr);
  EXPECT_EQ(QDE_Error(), 0);
  EXPECT_EQ(K_CountHandles(), before + 1);
  K_FreeHandle(handle);
  EXPECT_EQ(K_CountHandles(), before);
}

TEST(QDEHandles, StayWhileLocked) {
  const Handle handle = K_AllocateHandleClear(0, "test", 16);
  K_SetScramble(1);
  HLock(handle);
  HLock(handle);
  const Ptr block = *handle;
  K_FreeHandle(NewEmptyHandle());
  EXPECT_EQ(*handle, block);
  HUnlock(handle);
  K_FreeHandle(NewEmptyHandle());
  EXPECT_NE(*handle, block);
  K_SetScramble(0);
  K_FreeHandle(handle);
}

TEST(QDEHandles, MayBeNull) {
  HLock(nullptr);
  HUnlock(nullptr);
}

}  // namespace
