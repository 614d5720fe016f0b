// The kernels that are compiled for one level each. How they come to exact
// results:
//
// 8 to 16 bits: c * 32768 / 255 is c * 128 + c * 128 / 255, and for c up to 255
// 16449 / 32768 is near enough to 128 / 255 for the second term to round alike.
//
// 8 bits to float: 1/255 as the sum of two floats, the nearer one and what it
// misses. A fused product and sum then rounds once. Without fused operations the
// product is made in double precision, like the table.
//
// 16 to 8 bits: the high half of v * 1020 is v * 255 / 16384 rounded down; the
// average with 0 halves that and rounds upward. The low byte of it is kept.
//
// Float to 8 bits: of a product of 255 or more the minimum leaves 255, and of
// NaN its second operand, which is NaN. Conversion to integers truncates and
// makes the lowest integer of NaN and of what is too low, and narrowing makes 0
// of all negative ones.
#ifndef TRANSFER_KERNELS_LEVEL_KERNELS_H
#define TRANSFER_KERNELS_LEVEL_KERNELS_H

#include "transfer/kernels/Kernels.h"

extern const PXLp_KernelSet PXLp_KERNELS_SSE41;
extern const PXLp_KernelSet PXLp_KERNELS_AVX2;
extern const PXLp_KernelSet PXLp_KERNELS_AVX512;

// The factors of those explanations.
inline constexpr short PXLp_FRACTION_8TO16 = 16449;
inline constexpr short PXLp_FACTOR_16TO8 = 1020;
inline constexpr float PXLp_NEARER_PART = 1.0F / 255.0F;
inline constexpr float PXLp_FARTHER_PART =
    static_cast<float>(1.0 / 255.0 - static_cast<double>(PXLp_NEARER_PART));

#endif
