// Frames of module memory for new Worlds.
#ifndef WORLD_FRAME_WORLD_H
#define WORLD_FRAME_WORLD_H

#include <cstdint>

#include "PXL.h"

// Allocates the frame of a new World. Returns 0 or the status of a failure that
// has been reported.
[[nodiscard]] std::int32_t PXLp_NewWorldNoPlatformBacking(const Rect& rect, std::int32_t depth,
                                                          PXL_WorldHandle worldH);

#endif
