// The conversions of a row of channels.
#ifndef TRANSFER_KERNELS_KERNELS_H
#define TRANSFER_KERNELS_KERNELS_H

#include <cstddef>

#include "simd/processor.h"

// Converts `channels` channels. Knows no World, no stride and no error. Source
// and destination do not overlap; neither needs more alignment than a channel.
using PXLp_RowKernel = void (*)(const void* source, void* destination, std::size_t channels);

// The plain loops: the definition that every other kernel equals bit for bit,
// for every input.

// Through the conversion tables.
void PXLp_Row8to16(const void* source, void* destination, std::size_t channels);
void PXLp_Row8toF(const void* source, void* destination, std::size_t channels);
// (v * 255 + 16384) >> 15, the low 8 bits.
void PXLp_Row16to8(const void* source, void* destination, std::size_t channels);
// Clamped and truncated, not rounded; NaN gives 0.
void PXLp_RowFto8(const void* source, void* destination, std::size_t channels);

// One conversion in two manners. After the last row of streaming the caller
// ends with simd::FinishStreaming().
struct PXLp_KernelPair {
  PXLp_RowKernel caching;
  PXLp_RowKernel streaming;
};

struct PXLp_KernelSet {
  PXLp_KernelPair from8to16;
  PXLp_KernelPair from8toF;
  PXLp_KernelPair from16to8;
  PXLp_KernelPair fromFto8;
};

// The kernels of a level that the processor has; the baseline's are the plain
// loops.
const PXLp_KernelSet& PXLp_KernelsOf(simd::Level level);

// What blits use: the plain loops until Birth has built the tables, since a
// blit before gives what the tables hold; then those of the processor's level.
extern PXLp_KernelSet PXLp_kernels;

#endif
