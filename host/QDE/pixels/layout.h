// Where the pixels of a surface lie in its block.
#ifndef QDE_LAYOUT_H
#define QDE_LAYOUT_H

#include <cstdint>

#include "host/QDE/pixels/errors.h"

namespace qde {

// The bits of a pixel map's rowBytes: the stride, and two flags above it.
constexpr std::int32_t kStrideMask = 0x3FFF;
constexpr std::int32_t kPixMapFlag = 0x8000;
constexpr std::int32_t kPortFlag = 0x4000;

struct Layout {
  Rect bounds;
  std::int16_t depth;
  std::int32_t rowBytes;
};

// Only 8 and 32 bits are supported.
inline bool IsDepth(std::int16_t depth) {
  return depth == 8 || depth == 32;
}
inline std::int32_t BytesPerPixel(std::int16_t depth) {
  return depth / 8;
}

// 16-bit coordinates can be 65535 apart.
inline std::int32_t Width(const Rect& rect) {
  return rect.right - rect.left;
}
inline std::int32_t Height(const Rect& rect) {
  return rect.bottom - rect.top;
}
inline bool IsEmpty(const Rect& rect) {
  return Width(rect) <= 0 || Height(rect) <= 0;
}
inline std::uint64_t ByteCount(const Layout& layout) {
  return static_cast<std::uint64_t>(std::int64_t{layout.rowBytes} * Height(layout.bounds));
}

// Fails for other depths, empty bounds, and rows whose stride does not fit.
Error PlanLayout(std::int16_t depth, const Rect& bounds, Layout* layout);

}  // namespace qde

#endif
