// Reverses the bytes of the pixels of an area.
#include "host/QDE/surfaces/reverse_pixels.h"

#include <cstddef>

#include "simd/routines.h"

namespace qde {

void ReversePixels(void* base, std::int32_t height, std::int32_t width, std::int32_t rowBytes) {
  if (height <= 0 || width <= 0) return;
  const auto count = static_cast<std::size_t>(width);
  const auto reverse = simd::BestRoutines().reverseBytes32;
  // Without gaps, all rows are one run.
  if (rowBytes == std::int64_t{width} * 4) {
    reverse(base, count * static_cast<std::size_t>(height));
    return;
  }
  for (std::int32_t row = 0; row < height; ++row) {
    reverse(static_cast<char*>(base) + std::ptrdiff_t{rowBytes} * row, count);
  }
}

}  // namespace qde
