// Copies that do not change the bytes of pixels.
#ifndef QDE_PIXEL_COPY_H
#define QDE_PIXEL_COPY_H

#include "host/QDE/copy/plan.h"
#include "host/QDE/pixels/image.h"

namespace qde {

// Images of one depth, which do not overlap. Throws std::bad_alloc.
void CopyPixels(const Image& source, const Image& destination, const Plan& plan);

// Unscaled, for overlapping images with rows of the same stride.
void ShiftPixels(const Image& source, const Image& destination, const Plan& plan);

}  // namespace qde

#endif
