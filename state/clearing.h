// Filling the pixels of a World.
#ifndef STATE_CLEARING_H
#define STATE_CLEARING_H

#include <cstdint>

#include "PXL.h"

// The core of PXL_ClearWorldToLong.
void PXLp_FillWorld(PXL_WorldHandle worldH, std::int32_t value);

#endif
