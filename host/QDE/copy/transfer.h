// Transfers a rectangle of one image to a rectangle of another.
#ifndef QDE_TRANSFER_H
#define QDE_TRANSFER_H

#include <cstdint>

#include "host/QDE/pixels/errors.h"
#include "host/QDE/pixels/image.h"
#include "host/QDE/pixels/port_colors.h"

namespace qde {

// The mode and the colours to draw with.
struct Ink {
  std::int16_t mode = 0;
  PortColors colors = kInitialColors;
};
// Added to the number of a mode: dithers colours.
constexpr std::int16_t kDither = 64;

// Scales and clips as CopyBits does, in all depths; the images may overlap. Throws
// std::bad_alloc, before it draws, when there is no memory for its buffers.
Error Transfer(const Image& source, const Image& destination, const Rect& sourceRect,
               const Rect& destinationRect, const Ink& ink);

}  // namespace qde

#endif
