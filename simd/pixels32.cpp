// Fills and reverses 32-bit words with the routines of this processor.
#include "simd/pixels32.h"

#include "simd/routines.h"
#include "simd/streaming.h"

namespace simd {

void Fill32(void* destination, std::uint32_t value, std::size_t count) {
  const Routines& routines = BestRoutines();
  const bool caching = StoresForFill(count * sizeof value) == Stores::Caching;
  const auto fill = caching ? routines.fill32 : routines.streamingFill32;
  fill(destination, value, count);
  FinishStreaming();  // cheap, also after caching stores
}

void ReverseBytes32(void* words, std::size_t count) {
  BestRoutines().reverseBytes32(words, count);
}

}  // namespace simd
