// Between rows of indices and rows of 32-bit pixels.
#ifndef QDE_ROW_COLORS_H
#define QDE_ROW_COLORS_H

#include <cstddef>
#include <cstdint>

#include "colors.h"
#include "image.h"
#include "simd/processor.h"

namespace qde {

// For each colour the nearest index, at the place that PlaceOf gives. A byte of
// 0 says that it may not have been looked for; all others are an index with the
// bits of `mask` turned. Three bytes follow that belong to no colour.
struct NearestTable {
  const std::uint8_t* bytes;
  std::uint8_t mask;
};

// The colours of the cell that a colour is in lie side by side: a cell is chosen
// by the upper five bits of each component, the place within by the lower three.
constexpr int kCellBits = 5;
constexpr int kBitsInCell = 8 - kCellBits;
constexpr std::uint32_t JoinBits(Color color, int shift, std::uint32_t mask, int bits) {
  const auto part = [=](std::uint8_t component) { return component >> shift & mask; };
  return (part(color.red) << bits | part(color.green)) << bits | part(color.blue);
}
constexpr std::uint32_t CellOf(Color color) {
  return JoinBits(color, kBitsInCell, (1U << kCellBits) - 1, kCellBits);
}
constexpr std::uint32_t PlaceInCell(Color color) {
  return JoinBits(color, 0, (1U << kBitsInCell) - 1, kBitsInCell);
}
constexpr std::uint32_t PlaceOf(Color color) {
  return CellOf(color) << 3 * kBitsInCell | PlaceInCell(color);
}

struct ColorRoutines {
  // Gives how many indices it wrote: all, or those up to about the first byte of
  // 0 in the table.
  std::size_t (*find)(const NearestTable& table, Format format, const std::uint8_t* pixels,
                      std::uint8_t* indices, std::size_t count);
  // The pixels of a table of 256.
  void (*show)(const std::uint8_t* table, const std::uint8_t* indices, std::uint8_t* pixels,
               std::size_t count);
};

// All levels give the same, but that some stop sooner than others; the processor
// has to have the one asked for.
const ColorRoutines& ColorRoutinesOf(simd::Level level);

}  // namespace qde

#endif
