// Colour tables: the two shared ones, and what copying needs of any.
#ifndef QDE_COLORS_H
#define QDE_COLORS_H

#include <array>
#include <bitset>
#include <cstdint>

#include "QDE_host.h"

namespace qde {

CTabHandle StandardColors();
// What the pixel maps of 32-bit surfaces show instead of null.
CTabHandle DirectColors();

// Components of 8 bits.
struct Color {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
  bool operator==(const Color&) const = default;
};

// A table by index. Indices that it leaves out are black, and never found.
class Palette {
 public:
  explicit Palette(const QDE_ColorTable& table);

  [[nodiscard]] Color operator[](std::uint8_t index) const { return colors_[index]; }
  // The smallest squared distance; at a tie the lowest index; 0 when the table
  // leaves out all indices.
  [[nodiscard]] std::uint8_t Nearest(Color color) const;
  bool operator==(const Palette&) const = default;

 private:
  std::array<Color, 256> colors_{};
  std::bitset<256> present_;
};

}  // namespace qde

#endif
