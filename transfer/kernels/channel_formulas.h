// The arithmetic of one channel. The rounding of each product, truncation and
// wrapping decide the last bit, so no step may be replaced by a similar one.
#ifndef TRANSFER_KERNELS_CHANNEL_FORMULAS_H
#define TRANSFER_KERNELS_CHANNEL_FORMULAS_H

#include <cmath>
#include <cstdint>

// Full scale of the channels.
inline constexpr std::uint32_t PXLp_kFullScale8 = 255;
inline constexpr std::uint32_t PXLp_kFullScale16 = 32768;

// The double nearest to 1/255.
inline constexpr double PXLp_kReciprocal255 = 0.00392156862745098;

inline std::uint16_t PXLp_ConvertChannel8to16(std::uint8_t c) {
  return static_cast<std::uint16_t>((c * PXLp_kFullScale16 + 128) / PXLp_kFullScale8);
}

// A double product: with a float one, 126 of the 256 values would differ.
inline float PXLp_ConvertChannel8toF(std::uint8_t c) {
  return static_cast<float>(static_cast<double>(static_cast<float>(c)) * PXLp_kReciprocal255);
}

// Rounds to nearest, halves upward. Values above full scale are not clamped;
// from 32833 on the byte wraps.
inline std::uint8_t PXLp_ConvertChannel16to8(std::uint16_t v) {
  return static_cast<std::uint8_t>((v * PXLp_kFullScale8 + 16384) >> 15);
}

inline float PXLp_ConvertChannel16toF(std::uint16_t v) {
  return static_cast<float>(v) * 3.0517578125e-05F;
}

// Neither comparison changes NaN, and the first one keeps -0.0; fmin and fmax
// would change them.
inline float PXLp_ClipChannel(float c) {
  if (0.0F > c) return 0.0F;
  return 1.0F < c ? 1.0F : c;
}

// A clamped channel times full scale, rounded to nearest, halves upward. The
// product is rounded to float before the half is added in double. NaN becomes 0.
inline std::uint32_t PXLp_ScaleAndRound(float clipped, float fullScale) {
  const float product = clipped * fullScale;
  if (std::isnan(product)) return 0;
  return static_cast<std::uint32_t>(static_cast<double>(product) + 0.5);
}

// The blit's conversion of a float channel: clamps the product and truncates it.
// NaN becomes 0.
inline std::uint8_t PXLp_TruncateFto8(float c) {
  const float product = c * 255.0F;
  if (0.0F > product || std::isnan(product)) return 0;
  return product >= 255.0F ? 255 : static_cast<std::uint8_t>(product);
}

#endif
