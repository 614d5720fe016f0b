// Selects the routines of a level.
#include "simd/routines.h"

#include "simd/level_routines.h"
#include "simd/plain_loops.h"
#include "simd/processor_level.h"

namespace simd {
namespace {

constexpr Routines kBaselineRoutines = {PlainCopy, PlainCopy, PlainFill32, PlainFill32,
                                        PlainReverseBytes32};

}  // namespace

const Routines& RoutinesOf(Level level) {
  switch (level) {
    case Level::Sse41:
      return kSse41Routines;
    case Level::Avx2:
      return kAvx2Routines;
    case Level::Avx512:
      return kAvx512Routines;
    default:
      return kBaselineRoutines;
  }
}

const Routines& BestRoutines() {
  static const Routines& best = RoutinesOf(ProcessorLevel());
  return best;
}

}  // namespace simd
