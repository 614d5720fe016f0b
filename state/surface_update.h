// Updating a drawing surface.
#ifndef STATE_SURFACE_UPDATE_H
#define STATE_SURFACE_UPDATE_H

#include <cstdint>

#include "PXL.h"

// Updates the surface in *surface, which the layer may replace, to a rectangle
// and a depth. Returns 0 or a negative error of the drawing layer; after one, a
// surface without pixels looks purged, and after -108 memory has been freed.
// Reports nothing.
[[nodiscard]] std::int32_t PXLp_UpdatePlatformSurface(GWorldPtr* surface, const Rect& rect,
                                                      std::int32_t depth, GDHandle device);

#endif
