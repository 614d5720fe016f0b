// A rectangle of one image to a rectangle of another.
#ifndef QDE_TRANSFER_H
#define QDE_TRANSFER_H

#include <cstdint>

#include "errors.h"
#include "image.h"

namespace qde {

// Scales and clips as CopyBits does, in any depth and whatever memory the two
// images share. Throws std::bad_alloc, before it has drawn anything, when there
// is no memory for what it keeps meanwhile.
Error Transfer(const Image& source, const Image& destination, const Rect& sourceRect,
               const Rect& destinationRect, std::int16_t mode);

}  // namespace qde

#endif
