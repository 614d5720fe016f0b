// The arithmetic of one channel. Exact: which products are rounded to float,
// what is truncated and what wraps decides the last bit.
#ifndef TRANSFER_KERNELS_CHANNEL_FORMULAS_H
#define TRANSFER_KERNELS_CHANNEL_FORMULAS_H

#include <cmath>
#include <cstdint>

// Full scale of the channels.
inline constexpr std::uint32_t PXLp_FULL_8 = 255;
inline constexpr std::uint32_t PXLp_FULL_16 = 32768;

// The double nearest to 1/255.
inline constexpr double PXLp_RECIPROCAL_255 = 0.00392156862745098;

inline std::uint16_t PXLp_Channel8to16(std::uint8_t c) {
  return static_cast<std::uint16_t>((c * PXLp_FULL_16 + 128) / PXLp_FULL_8);
}

// A double product: with a float one, 126 of the 256 values would differ.
inline float PXLp_Channel8toF(std::uint8_t c) {
  return static_cast<float>(static_cast<double>(static_cast<float>(c)) * PXLp_RECIPROCAL_255);
}

// Rounds to nearest, halves upward. Values above full scale are not clamped;
// from 32833 on the byte wraps.
inline std::uint8_t PXLp_Channel16to8(std::uint16_t v) {
  return static_cast<std::uint8_t>((v * PXLp_FULL_8 + 16384) >> 15);
}

inline float PXLp_Channel16toF(std::uint16_t v) {
  return static_cast<float>(v) * 3.0517578125e-05F;
}

// Both comparisons leave NaN alone, and the first one -0.0 as well; fmin and
// fmax would not.
inline float PXLp_ClipChannel(float c) {
  if (0.0F > c) return 0.0F;
  return 1.0F < c ? 1.0F : c;
}

// A clamped channel times full scale, rounded to nearest, halves upward. The
// product is rounded to float before the half is added in double. NaN gives 0.
inline std::uint32_t PXLp_ScaleAndRound(float clipped, float fullScale) {
  const float product = clipped * fullScale;
  if (std::isnan(product)) return 0;
  return static_cast<std::uint32_t>(static_cast<double>(product) + 0.5);
}

// What the blit does with a float channel: clamp the product and truncate. NaN
// passes both comparisons and is 0 like everything below 1.
inline std::uint8_t PXLp_TruncateFto8(float c) {
  const float product = c * 255.0F;
  if (0.0F > product || std::isnan(product)) return 0;
  return product >= 255.0F ? 255 : static_cast<std::uint8_t>(product);
}

#endif
