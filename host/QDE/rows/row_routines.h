// The inner loops of CopyBits: one routine for each transfer mode. Callers take care
// of geometry, depths and overlap.
#ifndef QDE_ROW_ROUTINES_H
#define QDE_ROW_ROUTINES_H

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/QDE/pixels/pixel.h"
#include "host/QDE/rows/blend_factors.h"
#include "simd/processor_level.h"

namespace qde {

// The colours of a copy, by byte of a pixel in the format of the rows. The fourth
// bytes are such that routines of components leave the destination's unchanged.
struct Operands {
  Pixel32 components;                     // FF at the components; fourth byte 0
  Pixel32 fore;                           // fourth byte 0
  Pixel32 back;                           // fourth byte FF
  Pixel32 hilite;                         // with `ground`, the two that hilite swaps
  Pixel32 ground;                         // both: fourth byte 0
  Pixel32 ceiling;                        // the op colour; fourth byte FF
  Pixel32 floor;                          // the op colour; fourth byte 0
  std::array<std::uint32_t, 4> weights;   // the op colour in 16 bits; the fourth is 0
  BlendFactors blend;                     // of the weights, if they exist
  std::array<std::uint8_t, 256> visible;  // by source index: 0 for the back colour, else FF
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
  RowRoutines indexed;  // for indices of one table; null: works on the colours
};

constexpr std::size_t kModeCount = 17;

// Null for an unknown mode. All levels have the same results. The processor has to
// support the level.
const Mode* FindMode(std::int16_t number, simd::Level level = simd::ProcessorLevel());

}  // namespace qde

#endif
