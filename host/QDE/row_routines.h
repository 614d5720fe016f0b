// The inner loops of CopyBits: one routine for each transfer mode and pair of
// depths. Geometry, clipping and overlap are none of their business.
#ifndef QDE_ROW_ROUTINES_H
#define QDE_ROW_ROUTINES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "colors.h"
#include "image.h"

namespace qde {

// What the routines look up, made once a copy. Only what the pair of depths
// needs is filled in.
struct RowContext {
  RowContext(const Image& source, const Image& destination);

  Format sourceFormat;
  Format destinationFormat;
  std::optional<Palette> target;                          // to 8 bits: the colours to choose from
  bool sameTable = true;                                  // 8 to 8
  std::array<std::uint8_t, 256> indices{};                // 8 to 8 of another table, by index
  std::array<std::array<std::uint8_t, 4>, 256> pixels{};  // 8 to 32, by index
};

// Transfers `count` pixels. The two runs do not overlap; neither is aligned.
using RowRoutine = void (*)(const RowContext& context, const std::uint8_t* source,
                            std::uint8_t* destination, std::size_t count);

// Null for a mode that is not there. Depths are 8 or 32.
RowRoutine FindRowRoutine(std::int16_t mode, std::int16_t sourceDepth,
                          std::int16_t destinationDepth);

}  // namespace qde

#endif
