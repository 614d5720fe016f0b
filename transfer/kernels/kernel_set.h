// The conversions of a row of channels, as types.
#ifndef TRANSFER_KERNELS_KERNEL_SET_H
#define TRANSFER_KERNELS_KERNEL_SET_H

#include <cstddef>

// Converts `channels` channels. Takes no World, no stride, and cannot fail.
// Source and destination do not overlap; neither needs more alignment than a
// channel.
using PXLp_RowKernel = void (*)(const void* source, void* destination, std::size_t channels);

// One conversion with stores of two kinds. After the last row of streaming the
// caller calls simd::FinishStreaming().
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

#endif
