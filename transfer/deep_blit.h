// The blit between Worlds of which at least one is deeper than 32 bits.
#ifndef TRANSFER_DEEP_BLIT_H
#define TRANSFER_DEEP_BLIT_H

#include <cstdint>

#include "PXL.h"

// Chooses the path by the two depths. A pair without a path is reported, but
// returns 0 with nothing copied: hosts rely on it.
std::int32_t PXLp_Blit64(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH);

// The paths. Each checks the depth that it was chosen for and that the Worlds
// are of one size, then walks the rows. Returns 0 or PXL_Err_REFUSED.
std::int32_t PXLp_BlitSameDepth(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                                std::int32_t depth);
std::int32_t PXLp_BlitDeepto32(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t sourceDepth);
std::int32_t PXLp_Blit32toDeep(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH,
                               std::int32_t destinationDepth);

#endif
