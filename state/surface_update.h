// Updating a drawing surface.
#ifndef STATE_SURFACE_UPDATE_H
#define STATE_SURFACE_UPDATE_H

#include <cstdint>

#include "PXL.h"

// Updates the surface in *surface, which may be replaced, to a rectangle and a
// depth. The World and the last argument are ignored. Gives 0 or a negative
// error of the drawing layer; after one, a surface that lost its pixels looks
// purged, and after -108 memory has been freed. Nothing is reported.
[[nodiscard]] std::int32_t PXLp_UpdatePlatformSurface(PXL_WorldHandle worldH, GWorldPtr* surface,
                                                      std::int32_t depth, const Rect* rect,
                                                      void* device, void* ignored);

#endif
