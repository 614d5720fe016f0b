// Drawing surfaces for new Worlds.
#ifndef WORLD_SURFACE_WORLD_H
#define WORLD_SURFACE_WORLD_H

#include <cstdint>

#include "PXL.h"

// Creates the drawing surface of a new World. Returns 0 or the status of a
// failure that has been reported.
[[nodiscard]] std::int32_t PXLp_NewWorldPlatformBacking(const Rect& rect, std::int32_t depth,
                                                        PXL_WorldHandle worldH);

#endif
