// Scales rows of 32-bit pixels to the nearest pixel on the left. Neither run is
// aligned, and the two do not overlap.
#ifndef QDE_ROW_SCALING_H
#define QDE_ROW_SCALING_H

#include <cstddef>
#include <cstdint>

#include "simd/processor.h"

namespace qde {

struct ScalingRoutines {
  // Every second pixel, of which no more than 2 * count - 1 are read.
  void (*halve)(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);
  // Every pixel twice, the last one once when `count` is odd.
  void (*twice)(const std::uint8_t* source, std::uint8_t* destination, std::size_t count);
  // The pixels at these positions, each below 2^29.
  void (*gather)(const std::uint8_t* source, const std::uint32_t* positions,
                 std::uint8_t* destination, std::size_t count);
};

// All levels have the same results. The processor has to support the level.
const ScalingRoutines& ScalingRoutinesOf(simd::Level level);

}  // namespace qde

#endif
