// The two tables that widen 8-bit channels. Written by Birth alone.
#ifndef TRANSFER_KERNELS_CONVERSION_TABLES_H
#define TRANSFER_KERNELS_CONVERSION_TABLES_H

#include <array>
#include <cstdint>

// Entry i equals what PXL_Pixel8to16 gives for a channel of i.
extern std::array<std::uint16_t, 256> PXLp_table8to16;
// Entry i has the bits of what PXL_Pixel8toF gives for a channel of i.
extern std::array<float, 256> PXLp_table8toF;

// Builds both. Birth calls it; until then the tables hold zeros. Every call
// writes the same values.
void PXLp_BuildConversionTables();

#endif
