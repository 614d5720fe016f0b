// The plain loops between indices and pixels, and the selection of a level's routines.
#include "host/QDE/rows/row_colors.h"

#include <cstring>

#include "host/QDE/pixels/pixel.h"
#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

void Find(const NearestTable& table, Format format, const std::uint8_t* pixels,
          std::uint8_t* indices, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint8_t byte = table.bytes[PlaceOf(ColorAt(pixels, i, format))];
    indices[i] = static_cast<std::uint8_t>(byte ^ table.mask);
  }
}

void Show(const std::uint8_t* table, const std::uint8_t* indices, std::uint8_t* pixels,
          std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(pixels + i * sizeof(Pixel32), table + indices[i] * sizeof(Pixel32),
                sizeof(Pixel32));
  }
}

constexpr ColorRoutines kBaseline = {Find, Show};

}  // namespace

const ColorRoutines& ColorRoutinesOf(simd::Level level) {
  switch (level) {
    case simd::Level::Avx2:
      return kAvx2Routines.colors;
    case simd::Level::Avx512:
      return kAvx512Routines.colors;
    default:
      return kBaseline;
  }
}

}  // namespace qde
