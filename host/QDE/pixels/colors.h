// Colour tables: the two shared ones, and the palettes that copying reads.
#ifndef QDE_COLORS_H
#define QDE_COLORS_H

#include <array>
#include <bitset>
#include <cstdint>

#include "QDE_host.h"

namespace qde {

CTabHandle StandardColors();
// The table in the pixel maps of 32-bit surfaces, which is never null.
CTabHandle DirectColors();

// Components of 8 bits.
struct Color {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
  bool operator==(const Color&) const = default;
};

constexpr Color kBlack = {0x00, 0x00, 0x00};
constexpr Color kWhite = {0xFF, 0xFF, 0xFF};

// The high bytes.
Color ToColor(const QDE_RGBColor& color);

// A copy of a table with a handle to it.
class OwnTable {
 public:
  explicit OwnTable(const QDE_ColorTable& table);
  OwnTable(const OwnTable&) = delete;
  OwnTable& operator=(const OwnTable&) = delete;
  ~OwnTable() = default;

  [[nodiscard]] CTabHandle Handle() { return &master_; }

 private:
  QDE_ColorTable table_{};
  QDE_ColorTable* master_ = &table_;
};

// Whether the number of entries is valid.
bool IsSound(const QDE_ColorTable& table);

// The colours of a table by index. Missing indices are black and are never found.
class Palette {
 public:
  explicit Palette(const QDE_ColorTable& table);

  [[nodiscard]] Color operator[](std::uint8_t index) const { return colors_[index]; }
  [[nodiscard]] bool Has(std::uint8_t index) const { return present_[index]; }
  bool operator==(const Palette&) const = default;

 private:
  std::array<Color, 256> colors_{};
  std::bitset<256> present_;
};

// Whether each index has the same colour in both: tables of equal seed or content.
bool AreSame(const QDE_ColorTable& a, const QDE_ColorTable& b);

}  // namespace qde

#endif
