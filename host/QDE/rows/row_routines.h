// The inner loops of CopyBits: one routine a transfer mode. Geometry, depths
// and overlap are none of their business.
#ifndef QDE_ROW_ROUTINES_H
#define QDE_ROW_ROUTINES_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/QDE/pixels/pixel.h"
#include "host/QDE/rows/blend_factors.h"
#include "simd/processor.h"

namespace qde {

// The colours of a copy as its routines need them: by byte of a pixel, in the
// order of the rows. Where the routines work on components alone, the fourth
// byte is such that the destination's stays.
struct Operands {
  Pixel32 components;                     // FF at the components, 0 beside them
  Pixel32 fore;                           // 0 beside them
  Pixel32 back;                           // FF beside them
  Pixel32 hilite;                         // with `ground`, the two that hilite swaps
  Pixel32 ground;                         // 0 beside them, both
  Pixel32 ceiling;                        // the op colour; FF beside it
  Pixel32 floor;                          // the op colour; 0 beside it
  std::array<std::uint32_t, 4> weights;   // the op colour of 16 bits; 0 beside it
  BlendFactors blend;                     // of the weights; may be left out where none exist
  std::array<std::uint8_t, 256> visible;  // by source index: 0 of the back colour, else FF
};

// Combines `count` pixels with those of the destination, where the result goes.
// The two runs do not overlap; neither is aligned.
using RowRoutine = void (*)(const Operands& operands, const std::uint8_t* source,
                            std::uint8_t* destination, std::size_t count);

struct RowRoutines {
  RowRoutine plain;    // black foreground on white background
  RowRoutine colored;  // any other
};

struct Mode {
  std::int16_t number;
  bool readsDestination;
  RowRoutines direct;   // for pixels of 32 bits in one format
  RowRoutines indexed;  // for indices of one table; null: by way of the colours
};

constexpr std::size_t kModeCount = 17;

// Null for a mode that is not there. All levels draw the same; the processor
// has to have the one asked for.
const Mode* FindMode(std::int16_t number, simd::Level level = simd::ProcessorLevel());

}  // namespace qde

#endif
