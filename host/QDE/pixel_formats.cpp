// The two formats of 32-bit pixels: their bytes are in reverse order.
#include <cstddef>
#include <cstdint>

#include "QDE_host.h"
#include "errors.h"
#include "simd/pixels32.h"

// Row by row, since rows may have padding that is not for us. A negative
// rowBytes goes up in memory.
void QDE_ConvertBitsFast(void* base, std::int16_t height, std::int16_t width,
                         std::int32_t rowBytes) {
  if (base == nullptr || width <= 0) return;
  for (std::int16_t row = 0; row < height; ++row) {
    void* pixels = static_cast<char*>(base) + std::ptrdiff_t{rowBytes} * row;
    simd::ReverseBytes32(pixels, static_cast<std::size_t>(width));
  }
}

// Without surfaces there is no world whose format could be told.
std::int16_t QDE_GetGWorld32PixmapFormat(GWorldPtr, std::int32_t*) {
  return qde::SetError(qde::kIllegalParameter);
}

std::int16_t QDE_SetGWorld32PixmapFormat(GWorldPtr, std::int32_t) {
  return qde::SetError(qde::kIllegalParameter);
}

// Nor is there anything to force on their bitmaps.
void QDE_ForceBitmapCreationBitfields(Boolean, std::int32_t, std::int32_t) {
}
