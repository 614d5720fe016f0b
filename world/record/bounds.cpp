// The move of a rectangle to the origin.
#include "world/record/bounds.h"

#include <cstdint>

#include "platform/QDE.h"

Rect PXLp_MoveToOrigin(const Rect& rect) {
  Rect moved = rect;
  MacOffsetRect(&moved, static_cast<std::int16_t>(-rect.left),
                static_cast<std::int16_t>(-rect.top));
  return moved;
}
