#include "simd/routines.h"

#include <cstring>

#include "simd/pixels32.h"

namespace simd {
namespace {

void Copy(void* destination, const void* source, std::size_t bytes) {
  std::memmove(destination, source, bytes);
}

constexpr Routines BASELINE = {Copy, Copy, Fill32, Fill32, ReverseBytes32};

}  // namespace

const Routines& RoutinesOf(Level /*level*/) {
  return BASELINE;
}

const Routines& BestRoutines() {
  static const Routines& best = RoutinesOf(ProcessorLevel());
  return best;
}

}  // namespace simd
