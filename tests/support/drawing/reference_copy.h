// CopyBits pixel by pixel: slow, simple, and without code of the layer.
#ifndef TESTS_SUPPORT_DRAWING_REFERENCE_COPY_H
#define TESTS_SUPPORT_DRAWING_REFERENCE_COPY_H

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "QDE_host.h"

namespace reference {

// Red, green and blue of 8 bits.
using Rgb = std::array<int, 3>;

// A colour table by index; some indices may have none.
struct Table {
  int seed;
  std::array<std::optional<Rgb>, 256> colors;
};
Table TableOf(const QDE_ColorTable& table);

// A picture by value: rows without padding, in the order of `format`.
struct Picture {
  Rect bounds;
  int depth;
  int format;
  Table table;  // at 8 bits
  std::vector<std::uint8_t> bytes;
};

// Port colours in the order of QDE_PortColor.
using Colors = std::array<QDE_RGBColor, QDE_PortColorCount>;

// The destination after the copy.
Picture Copy(const Picture& source, const Picture& destination, const Rect& from, const Rect& to,
             int mode, const Colors& colors);

// The index of the colour of the table nearest to a colour.
int Nearest(const Table& table, const Rgb& color);

}  // namespace reference

#endif
