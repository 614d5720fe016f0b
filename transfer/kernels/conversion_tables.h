// The two tables that widen 8-bit channels. Birth alone writes them.
#ifndef TRANSFER_KERNELS_CONVERSION_TABLES_H
#define TRANSFER_KERNELS_CONVERSION_TABLES_H

#include <array>
#include <cstdint>

// Entry i equals the result of PXL_Pixel8to16 for a channel of i.
extern std::array<std::uint16_t, 256> PXLp_table8to16;
// Entry i equals, bit for bit, the result of PXL_Pixel8toF for a channel of i.
extern std::array<float, 256> PXLp_table8toF;

// Builds both tables, which hold zeros before. Every call writes the same values.
void PXLp_BuildConversionTables();

#endif
