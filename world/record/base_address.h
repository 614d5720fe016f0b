// The address of a World's first pixel.
#ifndef WORLD_RECORD_BASE_ADDRESS_H
#define WORLD_RECORD_BASE_ADDRESS_H

#include "PXL.h"

// The core of PXLp_GetPixBaseAddr. The module calls this one: the program
// around it can replace an exported function by its own.
[[nodiscard]] void* PXLp_LocatePixels(PXL_WorldHandle worldH);

// Returns the first pixel of a buffer that has a frame.
[[nodiscard]] void* PXLp_SkipAlignment(const PXL_PixelBuffer& pixels);

#endif
