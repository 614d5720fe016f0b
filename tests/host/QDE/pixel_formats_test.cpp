#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <vector>

#include "QDE_host.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Counting(std::size_t size) {
  Bytes bytes(size);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

TEST(ConvertBitsFast, ReversesTheBytesOfEachPixelAndLeavesThePadding) {
  Bytes bytes = Counting(24);
  QDE_ConvertBitsFast(bytes.data(), 2, 2, 12);
  const Bytes expected = {3,  2,  1,  0,  7,  6,  5,  4,  8,  9,  10, 11,
                          15, 14, 13, 12, 19, 18, 17, 16, 20, 21, 22, 23};
  EXPECT_EQ(bytes, expected);
}

TEST(ConvertBitsFast, IsItsOwnInverse) {
  for (std::int16_t width = 1; width < 40; ++width) {
    const auto rowBytes = 4 * width + 1;  // rows off any alignment
    Bytes bytes = Counting(static_cast<std::size_t>(rowBytes) * 3);
    const Bytes before = bytes;
    QDE_ConvertBitsFast(bytes.data(), 3, width, rowBytes);
    EXPECT_NE(bytes, before);
    QDE_ConvertBitsFast(bytes.data(), 3, width, rowBytes);
    EXPECT_EQ(bytes, before);
  }
}

TEST(ConvertBitsFast, GoesUpInMemoryWithNegativeRowBytes) {
  Bytes bytes = Counting(8);
  QDE_ConvertBitsFast(bytes.data() + 4, 2, 1, -4);
  EXPECT_EQ(bytes, (Bytes{3, 2, 1, 0, 7, 6, 5, 4}));
}

TEST(ConvertBitsFast, DoesNothingWithoutPixels) {
  Bytes bytes = Counting(16);
  QDE_ConvertBitsFast(bytes.data(), 0, 2, 8);
  QDE_ConvertBitsFast(bytes.data(), -1, 2, 8);
  QDE_ConvertBitsFast(bytes.data(), 2, 0, 8);
  QDE_ConvertBitsFast(bytes.data(), 2, -2, 8);
  QDE_ConvertBitsFast(nullptr, 2, 2, 8);
  EXPECT_EQ(bytes, Counting(16));
}

TEST(PixmapFormat, IsRefusedWithoutSurfaces) {
  std::int32_t format = -1;
  EXPECT_EQ(QDE_GetGWorld32PixmapFormat(nullptr, &format), -50);
  EXPECT_EQ(format, -1);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(nullptr, 1), -50);
  EXPECT_EQ(QDE_Error(), -50);
}

}  // namespace
