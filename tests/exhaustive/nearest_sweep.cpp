// Compares the nearest colours that the drawing layer finds with a search of the
// whole table, for all 2^24 colours and several tables.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

#include "QDE_host.h"
#include "tests/support/drawing/nearest_colors.h"

namespace {

std::mt19937 theGenerator{20261121};

std::uint16_t AnyComponent() {
  return static_cast<std::uint16_t>(theGenerator());
}

// Entries that the given function makes of their place.
template <typename Make>
QDE_ColorTable Table(std::int32_t seed, Make make) {
  QDE_ColorTable table{};
  table.ctSeed = seed;
  table.ctSize = 255;
  for (int i = 0; i < 256; ++i) table.ctTable[i] = {static_cast<std::int16_t>(i), make(i)};
  return table;
}

std::vector<reference::Rgb> ColorsOfRed(int red) {
  std::vector<reference::Rgb> colors;
  for (int i = 0; i < nearest::kMost; ++i) colors.push_back({red, i / 256, i % 256});
  return colors;
}

// Returns the number of differences.
int Sweep(const char* name, const QDE_ColorTable& table) {
  const nearest::Comparison comparison(table);
  int differences = 0;
  for (int red = 0; red < 256; ++red) differences += comparison.CountDifferences(ColorsOfRed(red));
  std::printf("%s: %d of 16777216 colours differ\n", name, differences);
  return differences;
}

}  // namespace

int main() {
  const auto start = std::chrono::steady_clock::now();
  const auto any = [](int) { return QDE_RGBColor{AnyComponent(), AnyComponent(), AnyComponent()}; };
  const auto grey = [](int i) {
    const auto level = static_cast<std::uint16_t>(i * 257);
    return QDE_RGBColor{level, level, level};
  };
  const auto few = [](int) {
    const auto level = [] { return static_cast<std::uint16_t>(AnyComponent() % 5 * 0x3FFF); };
    return QDE_RGBColor{level(), level(), level()};
  };
  int differences = Sweep("the standard table", **QDE_StandardColors());
  differences += Sweep("a random table", Table(2001, any));
  differences += Sweep("another random table", Table(2002, any));
  differences += Sweep("a table of greys", Table(2003, grey));
  differences += Sweep("a table of colours that recur", Table(2004, few));
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  std::printf("%.0f s\n", took.count());
  return differences == 0 ? 0 : 1;
}
