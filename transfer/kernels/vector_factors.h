// The factors of the vector kernels. These are the ways to exact results:
//
// 8 to 16 bits: c * 32768 / 255 is c * 128 + c * 128 / 255, and for c up to 255
// the factor 16449 / 32768 is close enough to 128 / 255 for the second term to
// round in the same way.
//
// 8 bits to float: 1/255 is the sum of two floats, the nearest one and the rest.
// A fused product and sum then rounds once. Levels without fused operations
// compute the product in double precision, like the table.
//
// 16 to 8 bits: the high half of v * 1020 is v * 255 / 16384 rounded down; the
// average with 0 halves that and rounds upward. The low byte is kept.
//
// Float to 8 bits: the minimum limits a product of 255 or more to 255, and for
// NaN returns its second operand, which is NaN. The conversion to integers
// truncates and returns the lowest integer for NaN and for values that are too
// low; narrowing turns every negative one into 0.
#ifndef TRANSFER_KERNELS_VECTOR_FACTORS_H
#define TRANSFER_KERNELS_VECTOR_FACTORS_H

inline constexpr short PXLp_kFraction8to16 = 16449;
inline constexpr short PXLp_kFactor16to8 = 1020;
inline constexpr float PXLp_kReciprocal255Nearest = 1.0F / 255.0F;
inline constexpr float PXLp_kReciprocal255Rest =
    static_cast<float>(1.0 / 255.0 - static_cast<double>(PXLp_kReciprocal255Nearest));

#endif
