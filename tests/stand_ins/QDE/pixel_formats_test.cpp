// The two 32-bit pixel formats.
#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <vector>

#include "tests/support/drawing/surfaces.h"

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

class PixmapFormat : public Surfaces {
 protected:
  static std::int32_t FormatOf(GWorldPtr world) {
    std::int32_t format = -1;
    EXPECT_EQ(QDE_GetGWorld32PixmapFormat(world, &format), 0);
    return format;
  }
};

TEST_F(PixmapFormat, IsZeroAtFirst) {
  GWorldPtr world = Make(32, Sized(3, 2));
  EXPECT_EQ(FormatOf(world), 0);
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, ConvertsThePixelsThatAreThere) {
  GWorldPtr world = Make(32, Sized(3, 2));
  std::uint8_t* pixels = PixelsOf(world);
  std::iota(pixels, pixels + 32, std::uint8_t{0});
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  EXPECT_EQ(FormatOf(world), 1);
  const std::vector<std::uint8_t> expected = {3,  2,  1,  0,  7,  6,  5,  4,  11, 10, 9,
                                              8,  12, 13, 14, 15, 19, 18, 17, 16, 23, 22,
                                              21, 20, 27, 26, 25, 24, 28, 29, 30, 31};
  EXPECT_EQ(Bytes(world), expected);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  EXPECT_EQ(Bytes(world), expected);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 0), 0);
  EXPECT_EQ(Bytes(world), Counting(32));
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, ConvertsLockedPixelsToo) {
  GWorldPtr world = Make(32, Sized(1, 1));
  ASSERT_EQ(LockPixels(GetPortPixMap(world)), 1);
  std::uint8_t* pixel = PixelsOf(world);
  std::iota(pixel, pixel + 4, std::uint8_t{0});
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  EXPECT_EQ(pixel[0], 3);
  // The lock of the caller is still there.
  EXPECT_EQ(PixelsOf(world), pixel);
  K_FreeHandle(NewEmptyHandle());
  EXPECT_EQ(PixelsOf(world), pixel);
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, ChangesWithoutPixelsToo) {
  GWorldPtr world = Make(32, Sized(3, 2), QDE_Flag_PIX_PURGE);
  Press();
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  EXPECT_EQ(FormatOf(world), 1);
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, LastsAsLongAsTheDepth) {
  GWorldPtr world = Make(32, Sized(2, 1));
  Fill(world, 0);
  ASSERT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  const std::uint8_t red[] = {0, 0, 0xFF, 0x80};
  std::memcpy(At(world, 1, 0), red, 4);
  EXPECT_NE(Update(&world, 32, Sized(5, 5), QDE_Flag_CLIP_PIX), 0U);
  EXPECT_EQ(FormatOf(world), 1);
  EXPECT_EQ(std::memcmp(At(world, 1, 0), red, 4), 0);
  EXPECT_NE(Update(&world, 8, Sized(2, 1), QDE_Flag_CLIP_PIX), 0U);
  EXPECT_EQ(*At(world, 1, 0), 35);
  EXPECT_NE(Update(&world, 32, Sized(5, 5)), 0U);
  EXPECT_EQ(FormatOf(world), 0);
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, IsRefusedWhereThereIsNone) {
  std::int32_t format = -1;
  GWorldPtr indexed = Make(8, Sized(3, 2));
  for (GWorldPtr world : {GWorldPtr{nullptr}, indexed}) {
    EXPECT_EQ(QDE_GetGWorld32PixmapFormat(world, &format), -50);
    EXPECT_EQ(format, -1);
    EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), -50);
    EXPECT_EQ(QDE_Error(), -50);
  }
  DisposeGWorld(indexed);
}

TEST_F(PixmapFormat, IsRefusedWhenNobodyKnowsIt) {
  GWorldPtr world = Make(32, Sized(3, 2));
  Fill(world, 0x12);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 2), -50);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, -1), -50);
  EXPECT_EQ(QDE_GetGWorld32PixmapFormat(world, nullptr), -50);
  EXPECT_EQ(FormatOf(world), 0);
  DisposeGWorld(world);
}

TEST_F(PixmapFormat, FailsOnceWhenToldTo) {
  GWorldPtr world = Make(32, Sized(3, 2));
  std::int32_t format = -1;
  QDE_FailNextCall(QDE_Call_GET_PIXMAP_FORMAT, -108);
  EXPECT_EQ(QDE_GetGWorld32PixmapFormat(world, &format), -108);
  EXPECT_EQ(format, -1);
  EXPECT_EQ(FormatOf(world), 0);
  QDE_FailNextCall(QDE_Call_SET_PIXMAP_FORMAT, -1);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), -1);
  EXPECT_EQ(FormatOf(world), 0);
  EXPECT_EQ(QDE_SetGWorld32PixmapFormat(world, 1), 0);
  DisposeGWorld(world);
}

}  // namespace
