// Moving rectangles.
#include <gtest/gtest.h>

#include "QDE_host.h"

namespace {

Rect Moved(Rect rect, std::int16_t dh, std::int16_t dv) {
  MacOffsetRect(&rect, dh, dv);
  return rect;
}

void ExpectEqual(const Rect& rect, const Rect& expected) {
  EXPECT_EQ(rect.top, expected.top);
  EXPECT_EQ(rect.left, expected.left);
  EXPECT_EQ(rect.bottom, expected.bottom);
  EXPECT_EQ(rect.right, expected.right);
}

TEST(MacOffsetRect, MovesToTheRightAndDown) {
  ExpectEqual(Moved({10, 20, 30, 40}, 3, -5), {5, 23, 25, 43});
}

TEST(MacOffsetRect, WrapsAt16Bits) {
  ExpectEqual(Moved({0, 32767, 1, 32767}, 1, 0), {0, -32768, 1, -32768});
  ExpectEqual(Moved({-32768, 0, 32767, 10}, 0, -1), {32767, 0, 32766, 10});
  ExpectEqual(Moved({-32768, -32768, 0, 0}, -32768, -32768), {0, 0, -32768, -32768});
}

}  // namespace
