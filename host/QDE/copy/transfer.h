// A rectangle of one image to a rectangle of another.
#ifndef QDE_TRANSFER_H
#define QDE_TRANSFER_H

#include <cstdint>

#include "host/QDE/pixels/errors.h"
#include "host/QDE/pixels/image.h"
#include "host/QDE/pixels/port_colors.h"

namespace qde {

// What to draw with.
struct Ink {
  std::int16_t mode = 0;
  PortColors colors = kInitialColors;
};
// Asks for colours to be dithered, in addition to the number of a mode.
constexpr std::int16_t kDither = 64;

// Scales and clips as CopyBits does, in any depth and whatever memory the two
// images share. Throws std::bad_alloc, before it has drawn anything, when there
// is no memory for what it keeps meanwhile.
Error Transfer(const Image& source, const Image& destination, const Rect& sourceRect,
               const Rect& destinationRect, const Ink& ink);

}  // namespace qde

#endif
