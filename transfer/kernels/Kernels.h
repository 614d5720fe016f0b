// The conversions of a row of channels, each a plain loop: the definition that
// any faster kernel has to equal bit for bit.
#ifndef TRANSFER_KERNELS_KERNELS_H
#define TRANSFER_KERNELS_KERNELS_H

#include <cstddef>

// Converts `channels` channels. Knows no World, no stride and no error. Source
// and destination do not overlap; neither needs more alignment than a channel.
using PXLp_RowKernel = void (*)(const void* source, void* destination, std::size_t channels);

// Through the conversion tables.
void PXLp_Row8to16(const void* source, void* destination, std::size_t channels);
void PXLp_Row8toF(const void* source, void* destination, std::size_t channels);
// (v * 255 + 16384) >> 15, the low 8 bits.
void PXLp_Row16to8(const void* source, void* destination, std::size_t channels);
// Clamped and truncated, not rounded; NaN gives 0.
void PXLp_RowFto8(const void* source, void* destination, std::size_t channels);

#endif
