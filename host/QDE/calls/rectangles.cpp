// Rectangles. Coordinates have 16 bits and wrap.
#include <cstdint>

#include "QDE_host.h"

namespace {

std::int16_t Shift(std::int16_t coordinate, std::int16_t distance) {
  // The sum of two 16-bit numbers fits 32 bits; the cast drops what wraps.
  return static_cast<std::int16_t>(coordinate + distance);
}

}  // namespace

void MacOffsetRect(Rect* rect, std::int16_t dh, std::int16_t dv) {
  rect->left = Shift(rect->left, dh);
  rect->right = Shift(rect->right, dh);
  rect->top = Shift(rect->top, dv);
  rect->bottom = Shift(rect->bottom, dv);
}
