// Blending with one multiplication of 16 bits for each component.
#ifndef QDE_BLEND_FACTORS_H
#define QDE_BLEND_FACTORS_H

#include <array>
#include <cstdint>

#include "host/QDE/pixels/pixel.h"

namespace qde {

// A blend starts at the one of source and destination that has the greater
// weight, and moves towards the other: with t = other - one, from -255 to 255, by
//   floor(t * weight / 65535) = (64 * t + offset) * factor >> 22
// if an offset and a factor exist with which this holds for all t and no number
// exceeds 16 bits. They are found for each component; all four have to exist.
struct BlendFactors {
  bool exist;
  Pixel32 fromSource;                // FF where the source has the greater weight
  std::array<std::int8_t, 8> signs;  // of source and destination in turn, times 64
  std::array<std::int16_t, 4> offsets;
  std::array<std::int16_t, 4> factors;
};

// From weights of the source, below 65536.
BlendFactors FindBlendFactors(const std::array<std::uint32_t, 4>& weights);

}  // namespace qde

#endif
