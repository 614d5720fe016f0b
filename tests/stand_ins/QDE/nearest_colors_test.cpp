// The nearest colours of many tables, against a search of the whole table.
#include "tests/support/drawing/nearest_colors.h"

#include <algorithm>
#include <iostream>
#include <random>
#include <vector>

#include "tests/support/drawing/surfaces.h"

namespace {

class NearestColors : public Surfaces {
 protected:
  NearestColors() { std::cout << "seed " << seed_ << "\n"; }

  std::uint16_t Any() { return static_cast<std::uint16_t>(generator_()); }

  // Entries that a function returns for their positions.
  template <typename Make>
  QDE_ColorTable Table(int count, Make make) {
    QDE_ColorTable table{};
    table.ctSeed = ++seeds_;
    table.ctSize = static_cast<std::int16_t>(count - 1);
    for (int i = 0; i < count; ++i) table.ctTable[i] = {static_cast<std::int16_t>(i), make(i)};
    return table;
  }
  // Colours at random, twice as many as a grid of five bits has cells, and those
  // round about the table's own.
  void Check(const QDE_ColorTable& table) {
    std::vector<reference::Rgb> colors;
    while (colors.size() < nearest::kMost) {
      const QDE_RGBColor& rgb = table.ctTable[Any() % (table.ctSize + 1)].rgb;
      colors.push_back({Any() / 256, Any() / 256, Any() / 256});
      colors.push_back({Beside(rgb.red), Beside(rgb.green), Beside(rgb.blue)});
    }
    const nearest::Comparison comparison(table);
    EXPECT_EQ(comparison.CountDifferences(colors), 0) << "seed " << seed_;
  }

 private:
  int Beside(std::uint16_t component) {
    return std::clamp(component / 256 + Any() % 5 - 2, 0, 255);
  }

  int seeds_ = 5000;
  std::random_device::result_type seed_ = std::random_device()();
  std::mt19937 generator_{seed_};
};

constexpr std::uint16_t Wide(int byte) {
  return static_cast<std::uint16_t>(byte * 257);
}

TEST_F(NearestColors, OfTheStandardTableAreThoseOfAFullSearch) {
  Check(**QDE_StandardColors());
}

TEST_F(NearestColors, OfRandomTablesAreThoseOfAFullSearch) {
  for (const int count : {256, 256, 100, 3, 2, 1}) {
    Check(Table(count, [this](int) { return QDE_RGBColor{Any(), Any(), Any()}; }));
  }
}

// At a tie the lowest index has to be found, wherever the others are.
TEST_F(NearestColors, OfTablesFullOfTiesAreThoseOfAFullSearch) {
  Check(Table(256, [this](int) {
    const auto level = [this] { return Wide(Any() % 3 * 127); };
    return QDE_RGBColor{level(), level(), level()};
  }));
  Check(Table(256, [](int) { return QDE_RGBColor{0x1200, 0x3400, 0x5600}; }));
}

TEST_F(NearestColors, OfCrowdedTablesAreThoseOfAFullSearch) {
  Check(Table(256, [](int i) { return QDE_RGBColor{Wide(i), Wide(i), Wide(i)}; }));
  Check(Table(256, [](int i) {
    return QDE_RGBColor{Wide(124 + i % 8), Wide(124 + i / 8 % 8), Wide(126 + i / 64)};
  }));
  Check(Table(256, [](int i) { return QDE_RGBColor{Wide(255), Wide(255 - i), Wide(0)}; }));
}

TEST_F(NearestColors, AreOfIndicesThatTheTableHas) {
  QDE_ColorTable table = Table(100, [this](int) { return QDE_RGBColor{Any(), Any(), Any()}; });
  for (int i = 0; i < 100; ++i) {
    table.ctTable[i].value = static_cast<std::int16_t>(i % 7 == 0 ? 300 + i : 200 - 2 * i);
  }
  Check(table);
  // Negative values and those above 255 are no indices: none is left.
  for (int i = 0; i < 100; ++i) table.ctTable[i].value = static_cast<std::int16_t>(-1 - i);
  table.ctSeed = 1;
  Check(table);
}

}  // namespace
