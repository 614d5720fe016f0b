// Transparent pixels laid over a ground.
#ifndef TOOLS_PXL_PICTURES_OPAQUE_H
#define TOOLS_PXL_PICTURES_OPAQUE_H

#include <cstddef>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// A channel with straight alpha over a ground of 0..255, to the nearest.
constexpr std::byte Over(std::byte value, std::byte alpha, unsigned ground) {
  const auto v = std::to_integer<unsigned>(value);
  const auto a = std::to_integer<unsigned>(alpha);
  return static_cast<std::byte>((v * a + ground * (255U - a) + 127U) / 255U);
}

// Lays an Integer8 pixel over a grey ground of 0..255; the result is opaque and
// may take the pixel's place.
constexpr void LayOver(const std::byte* pixel, unsigned ground, std::byte* result) {
  const std::byte alpha = pixel[0];
  result[0] = std::byte{255};
  for (int k = 1; k < 4; ++k) result[k] = Over(pixel[k], alpha, ground);
}

// Both are for Integer8 pictures and leave them opaque.
inline void LayOverWhite(Picture& picture) {
  for (std::size_t i = 0; i < picture.pixels.size(); i += 4) {
    LayOver(&picture.pixels[i], 255, &picture.pixels[i]);
  }
}
inline void DropAlpha(Picture& picture) {
  for (std::size_t i = 0; i < picture.pixels.size(); i += 4) picture.pixels[i] = std::byte{255};
}

}  // namespace pxl

#endif
