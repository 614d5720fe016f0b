// Channels of 16 bits between files and Worlds.
#include "tools/pxl/pictures/samples.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

using namespace pxl;

// Twice the distance, in units of 1/65535 of a World's step, is at most one step.
TEST(SixteenBitSamples, ComeToTheNearestWorldValue) {
  for (int v = 0; v <= 65535; ++v) {
    const int world = ToWorld16(static_cast<std::uint16_t>(v));
    ASSERT_LT(2 * std::abs(world * 65535 - v * 32768), 65535) << v;
  }
}

TEST(SixteenBitSamples, GoToTheNearestFileValueHalvesUpward) {
  for (int v = 0; v <= 32768; ++v) {
    const int file = ToFile16(static_cast<std::uint16_t>(v));
    const int twice = 2 * (file * 32768 - v * 65535);
    ASSERT_LE(twice, 32768) << v;
    ASSERT_GT(twice, -32768) << v;
  }
}

TEST(SixteenBitSamples, KeepBlackAndFullScale) {
  EXPECT_EQ(ToWorld16(0), 0);
  EXPECT_EQ(ToWorld16(65535), 32768);
  EXPECT_EQ(ToFile16(0), 0);
  EXPECT_EQ(ToFile16(32768), 65535);
}

TEST(SixteenBitSamples, AboveFullScaleAreClamped) {
  for (unsigned v = 32769; v <= 65535; ++v) {
    ASSERT_EQ(ToFile16(static_cast<std::uint16_t>(v)), 65535) << v;
  }
}

TEST(SixteenBitSamples, SurviveFromWorldToFileAndBack) {
  for (unsigned v = 0; v <= 32768; ++v) {
    ASSERT_EQ(ToWorld16(ToFile16(static_cast<std::uint16_t>(v))), v);
  }
}

TEST(SixteenBitSamples, ConvertInRowsAsOneByOne) {
  const std::uint16_t values[] = {0, 1, 2, 32767, 32768, 40000, 65535};
  std::byte row[sizeof values];
  std::byte file[sizeof values];
  std::memcpy(row, values, sizeof values);
  ToFile16(row, file, std::size(values));
  ToWorld16(row, std::size(values));
  for (std::size_t i = 0; i < std::size(values); ++i) {
    std::uint16_t world = 0;
    std::uint16_t back = 0;
    std::memcpy(&world, row + 2 * i, 2);
    std::memcpy(&back, file + 2 * i, 2);
    EXPECT_EQ(world, ToWorld16(values[i]));
    EXPECT_EQ(back, ToFile16(values[i]));
  }
}
