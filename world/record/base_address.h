// Where the pixels of a World begin.
#ifndef WORLD_RECORD_BASE_ADDRESS_H
#define WORLD_RECORD_BASE_ADDRESS_H

#include "PXL.h"

// The core of PXLp_GetPixBaseAddr, which the program around the module could
// take over.
[[nodiscard]] void* PXLp_PixBaseAddr(PXL_WorldHandle worldH);

// The first pixel of a buffer that has a frame.
[[nodiscard]] void* PXLp_FirstPixelOfFrame(const PXL_PixelBuffer& pixels);

#endif
