// The rectangle of a World.
#ifndef WORLD_RECORD_BOUNDS_H
#define WORLD_RECORD_BOUNDS_H

#include "PXL.h"

// The rectangle with its top left corner at the origin.
[[nodiscard]] Rect PXLp_MovedToOrigin(const Rect& rect);

#endif
