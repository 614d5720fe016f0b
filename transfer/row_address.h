// The address of a pixel in a locked World.
#ifndef TRANSFER_ROW_ADDRESS_H
#define TRANSFER_ROW_ADDRESS_H

#include <cstdint>

#include "PXL.h"

// Sets *address to pixel (x, y) of a World that must have the expected depth;
// otherwise reports and gives PXL_Err_REFUSED. The World is held locked by the
// caller: its base address is taken as it stands, and a negative stride is
// followed.
std::int32_t PXLp_WorldGetBaseAddrXY(PXL_WorldHandle worldH, std::int32_t expectedDepth,
                                     std::int32_t x, std::int32_t y, void** address);

#endif
