// Releasing Worlds and their pixels.
#ifndef WORLD_DISPOSAL_H
#define WORLD_DISPOSAL_H

#include <cstdint>

#include "PXL.h"

// Releases pixels, surface, marks and handle, in any state of the World. A null
// handle is accepted. Returns the status of releasing the pixels; a failure
// there does not stop the other steps.
std::int32_t PXLp_ReleaseWorld(PXL_WorldHandle worldH);

// Releases the frame or the provider's pixels and the provider. The buffer is
// part of a locked record.
[[nodiscard]] std::int32_t PXLp_ReleasePixels(PXL_PixelBuffer* pixels);

#endif
