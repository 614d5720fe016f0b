// Images: pixels in memory with their layout, as the copies use them.
#ifndef QDE_IMAGE_H
#define QDE_IMAGE_H

#include <cstddef>
#include <cstdint>

#include "host/QDE/pixels/layout.h"

namespace qde {

// The two orders of a 32-bit pixel's bytes in memory.
enum Format : std::int32_t { kARGB = 0, kBGRA = 1 };

// Valid while the pixels stay at their address.
struct Image {
  std::uint8_t* pixels;
  Layout layout;
  Format format;                 // at 32 bits
  const QDE_ColorTable* colors;  // at 8 bits

  // The address of a pixel within the bounds.
  [[nodiscard]] std::uint8_t* At(std::int32_t x, std::int32_t y) const {
    const std::ptrdiff_t row = std::ptrdiff_t{layout.rowBytes} * (y - layout.bounds.top);
    const std::ptrdiff_t column = x - layout.bounds.left;
    return pixels + row + column * BytesPerPixel(layout.depth);
  }
};

}  // namespace qde

#endif
