// The plain kernels: the definition that every other kernel equals bit for bit,
// for every input.
#ifndef TRANSFER_KERNELS_PLAIN_ROWS_H
#define TRANSFER_KERNELS_PLAIN_ROWS_H

#include <cstddef>

// Through the conversion tables.
void PXLp_ConvertRow8to16(const void* source, void* destination, std::size_t channels);
void PXLp_ConvertRow8toF(const void* source, void* destination, std::size_t channels);
// (v * 255 + 16384) >> 15, the low 8 bits.
void PXLp_ConvertRow16to8(const void* source, void* destination, std::size_t channels);
// Clamped and truncated, not rounded; NaN becomes 0.
void PXLp_ConvertRowFto8(const void* source, void* destination, std::size_t channels);

#endif
