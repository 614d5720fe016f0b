#include "simd/streaming.h"

#include <emmintrin.h>

#include "simd/processor.h"

namespace simd {

// Beyond a core's own cache, a caching store first fetches the line that it is
// about to replace.
Stores StoresFor(std::size_t bytesRead, std::size_t bytesWritten) {
  return bytesRead + bytesWritten > ProcessorCaches().own ? Stores::Streaming : Stores::Caching;
}

// The last level takes what is only written as fast as memory does, or faster.
Stores StoresForFill(std::size_t bytesWritten) {
  return bytesWritten > ProcessorCaches().shared ? Stores::Streaming : Stores::Caching;
}

void FinishStreaming() {
  _mm_sfence();
}

}  // namespace simd
