// Between rows of indices and rows of 32-bit pixels.
#ifndef QDE_ROW_COLORS_H
#define QDE_ROW_COLORS_H

#include <cstddef>
#include <cstdint>

#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/image.h"
#include "simd/processor.h"

namespace qde {

// For each colour its nearest index, xor-ed with `mask`, at the place returned by
// PlaceOf. A byte of 0 may also mean that the index is not known yet. Three more
// bytes follow, which routines may read.
struct NearestTable {
  const std::uint8_t* bytes;
  std::uint8_t mask;
};

// Colours of a picture are often similar, and similar colours share memory: 64 bytes,
// a cache line, hold a cube of 4 by 4 by 4 colours, and 4096 bytes, a page, one of 16
// by 16 by 16. The upper four bits of each component select the larger cube, the two
// in the middle the smaller one.
constexpr std::uint32_t JoinBits(Color color, int shift, int bits) {
  const auto part = [=](std::uint8_t component) { return component >> shift & ((1U << bits) - 1); };
  return (part(color.red) << bits | part(color.green)) << bits | part(color.blue);
}
constexpr std::uint32_t PlaceOf(Color color) {
  return (JoinBits(color, 4, 4) << 6 | JoinBits(color, 2, 2)) << 6 | JoinBits(color, 0, 2);
}

struct ColorRoutines {
  // Writes `mask` where the table has a byte of 0.
  void (*find)(const NearestTable& table, Format format, const std::uint8_t* pixels,
               std::uint8_t* indices, std::size_t count);
  // The pixels of a table of 256.
  void (*show)(const std::uint8_t* table, const std::uint8_t* indices, std::uint8_t* pixels,
               std::size_t count);
};

// All levels have the same results. The processor has to support the level.
const ColorRoutines& ColorRoutinesOf(simd::Level level);

}  // namespace qde

#endif
