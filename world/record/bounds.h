// The rectangle of a World.
#ifndef WORLD_RECORD_BOUNDS_H
#define WORLD_RECORD_BOUNDS_H

#include "PXL.h"

// Returns the rectangle with its top left corner at the origin.
[[nodiscard]] Rect PXLp_MoveToOrigin(const Rect& rect);

#endif
