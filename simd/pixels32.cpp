#include "simd/pixels32.h"

#include "simd/routines.h"
#include "simd/streaming.h"

namespace simd {

void Fill32(void* destination, std::uint32_t value, std::size_t count) {
  const Routines& routines = BestRoutines();
  if (StoresForFill(count * sizeof value) == Stores::Caching) {
    routines.fill32(destination, value, count);
  } else {
    routines.streamingFill32(destination, value, count);
    FinishStreaming();
  }
}

void ReverseBytes32(void* words, std::size_t count) {
  BestRoutines().reverseBytes32(words, count);
}

}  // namespace simd
