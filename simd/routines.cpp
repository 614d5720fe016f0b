#include "simd/routines.h"

#include "simd/level_routines.h"
#include "simd/plain_loops.h"

namespace simd {
namespace {

constexpr Routines BASELINE = {PlainCopy, PlainCopy, PlainFill32, PlainFill32, PlainReverseBytes32};

}  // namespace

const Routines& RoutinesOf(Level level) {
  switch (level) {
    case Level::Sse41:
      return ROUTINES_SSE41;
    case Level::Avx2:
      return ROUTINES_AVX2;
    case Level::Avx512:
      return ROUTINES_AVX512;
    default:
      return BASELINE;
  }
}

const Routines& BestRoutines() {
  static const Routines& best = RoutinesOf(ProcessorLevel());
  return best;
}

}  // namespace simd
