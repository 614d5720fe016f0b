// Locks, re-sizing and clearing: the cores that other parts of the module use.
#ifndef STATE_STATE_H
#define STATE_STATE_H

#include <cstdint>

#include "PXL.h"

// The core of PXLp_GetPixBaseAddr, which the program around the module could
// take over.
[[nodiscard]] void* PXLp_PixBaseAddr(PXL_WorldHandle worldH);

// The core of PXL_ClearWorldToLong.
void PXLp_FillWorld(PXL_WorldHandle worldH, std::int32_t value);

#endif
