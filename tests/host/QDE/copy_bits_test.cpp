#include <gtest/gtest.h>

#include "K_host.h"
#include "QDE_host.h"

namespace {

TEST(CopyBits, DrawsNothingWithoutBitmapsAndLeavesTheError) {
  K_FreeHandle(NewEmptyHandle());  // leaves no error
  ASSERT_EQ(QDE_Error(), 0);
  const Rect rect = {0, 0, 1, 1};
  CopyBits(nullptr, nullptr, &rect, &rect, 0, nullptr);
  EXPECT_EQ(QDE_Error(), -50);
}

}  // namespace
