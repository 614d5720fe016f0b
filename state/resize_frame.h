// Re-sizing the frame of a World without drawing surface.
#ifndef STATE_RESIZE_FRAME_H
#define STATE_RESIZE_FRAME_H

#include <cstdint>

#include "PXL.h"
#include "memory/pixel_extent.h"

// Replaces the frame of an unlocked World by one for the rectangle. The depth
// must be the World's own. Without a frame, or at the same size, nothing
// changes. The old frame is released first, so that both never exist at once;
// if the new one cannot be allocated, the World gets one of the old size, or
// none. Returns 0 or an error that has been reported.
[[nodiscard]] std::int32_t PXLp_ResizeFrame(const Rect& rect, std::int32_t depth,
                                            PXL_WorldHandle worldH);

// Stores a new geometry, moved to the origin, and the offset of the first pixel.
void PXLp_SetWorldGeometry(const PXLp_PixelExtent& extent, PXL_WorldHandle worldH);

#endif
