// The standard colour table.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <tuple>

#include "QDE_host.h"

namespace {

using Components = std::tuple<int, int, int>;

Components ColorAt(int index) {
  const QDE_RGBColor& rgb = (*QDE_StandardColors())->ctTable[index].rgb;
  return {rgb.red, rgb.green, rgb.blue};
}

Components Wide(std::uint32_t rgb) {
  const auto component = [rgb](int shift) { return static_cast<int>(rgb >> shift & 0xFF) * 257; };
  return {component(16), component(8), component(0)};
}

TEST(StandardColors, AreTheTableOfSeedEight) {
  const QDE_ColorTable& table = **QDE_StandardColors();
  EXPECT_EQ(table.ctSeed, 8);
  EXPECT_EQ(table.ctFlags, 0);
  EXPECT_EQ(table.ctSize, 255);
  std::set<Components> colors;
  for (int i = 0; i < 256; ++i) {
    EXPECT_EQ(table.ctTable[i].value, i);
    colors.insert(ColorAt(i));
  }
  EXPECT_EQ(colors.size(), 256U);
}

TEST(StandardColors, BeginWithACubeWithoutItsBlack) {
  constexpr int kLevels[] = {255, 204, 153, 102, 51, 0};
  for (int i = 0; i < 215; ++i) {
    const Components expected = {kLevels[i / 36] * 257, kLevels[i / 6 % 6] * 257,
                                 kLevels[i % 6] * 257};
    EXPECT_EQ(ColorAt(i), expected) << i;
  }
}

TEST(StandardColors, EndWithFourRampsAndBlack) {
  constexpr int kRamp[] = {0xEE, 0xDD, 0xBB, 0xAA, 0x88, 0x77, 0x55, 0x44, 0x22, 0x11};
  for (int i = 0; i < 10; ++i) {
    const int v = kRamp[i] * 257;
    EXPECT_EQ(ColorAt(215 + i), Components(v, 0, 0));
    EXPECT_EQ(ColorAt(225 + i), Components(0, v, 0));
    EXPECT_EQ(ColorAt(235 + i), Components(0, 0, v));
    EXPECT_EQ(ColorAt(245 + i), Components(v, v, v));
  }
  EXPECT_EQ(ColorAt(255), Components(0, 0, 0));
}

TEST(StandardColors, HaveTheirKnownPlaces) {
  EXPECT_EQ(ColorAt(0), Wide(0xFFFFFF));
  EXPECT_EQ(ColorAt(1), Wide(0xFFFFCC));
  EXPECT_EQ(ColorAt(5), Wide(0xFFFF00));
  EXPECT_EQ(ColorAt(6), Wide(0xFFCCFF));
  EXPECT_EQ(ColorAt(35), Wide(0xFF0000));
  EXPECT_EQ(ColorAt(36), Wide(0xCCFFFF));
  EXPECT_EQ(ColorAt(180), Wide(0x00FFFF));
  EXPECT_EQ(ColorAt(185), Wide(0x00FF00));
  EXPECT_EQ(ColorAt(210), Wide(0x0000FF));
  EXPECT_EQ(ColorAt(214), Wide(0x000033));
}

}  // namespace
