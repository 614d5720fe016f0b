// Re-sizing the frame of a World without drawing surface.
#ifndef STATE_RESIZE_FRAME_H
#define STATE_RESIZE_FRAME_H

#include <cstdint>

#include "PXL.h"

// Gives an unlocked World a frame for the rectangle. The depth must be the
// World's own. Without a frame, or at the same size, nothing changes. The old
// frame is freed first, so that both never exist at once; if the new one cannot
// be had, the World gets one of the old size again, or none. Gives 0 or an
// error that has been reported.
[[nodiscard]] std::int32_t PXLp_ResizeFrame(std::int32_t depth, const Rect* rect,
                                            PXL_WorldHandle worldH);

// Stores a new geometry, moved to the origin. Always gives 0.
std::int32_t PXLp_SetWorldGeometry(const Rect* rect, std::uint32_t rowBytes, std::int16_t depth,
                                   PXL_WorldHandle worldH);

#endif
