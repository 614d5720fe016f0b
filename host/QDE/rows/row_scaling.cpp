// The plain loops that scale rows, and the selection of a level's routines.
#include "host/QDE/rows/row_scaling.h"

#include <cstring>

#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

void CopyPixel(const std::uint8_t* source, std::size_t from, std::uint8_t* destination,
               std::size_t to) {
  std::memcpy(destination + 4 * to, source + 4 * from, 4);
}

void Halve(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) CopyPixel(source, 2 * i, destination, i);
}

void Twice(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) CopyPixel(source, i / 2, destination, i);
}

void Gather(const std::uint8_t* source, const std::uint32_t* positions, std::uint8_t* destination,
            std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) CopyPixel(source, positions[i], destination, i);
}

constexpr ScalingRoutines kBaseline = {Halve, Twice, Gather};

ScalingRoutines WithRoutinesOf(const LevelRoutines& level) {
  ScalingRoutines routines = level.scaling;
  if (routines.gather == nullptr) routines.gather = Gather;
  return routines;
}

}  // namespace

const ScalingRoutines& ScalingRoutinesOf(simd::Level level) {
  static const ScalingRoutines sse41 = WithRoutinesOf(kSse41Routines);
  switch (level) {
    case simd::Level::Sse41:
      return sse41;
    case simd::Level::Avx2:
      return kAvx2Routines.scaling;
    case simd::Level::Avx512:
      return kAvx512Routines.scaling;
    default:
      return kBaseline;
  }
}

}  // namespace qde
