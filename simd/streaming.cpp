// Decides by the sizes of the caches when stores bypass them.
#include "simd/streaming.h"

#include <emmintrin.h>

#include "simd/processor_caches.h"

namespace simd {

// Beyond a core's own cache, a caching store first fetches the line that it
// replaces.
Stores StoresFor(std::size_t bytesRead, std::size_t bytesWritten) {
  return bytesRead + bytesWritten > ProcessorCaches().own ? Stores::Streaming : Stores::Caching;
}

// The last level accepts stores without loads at least as fast as memory does.
Stores StoresForFill(std::size_t bytesWritten) {
  return bytesWritten > ProcessorCaches().shared ? Stores::Streaming : Stores::Caching;
}

void FinishStreaming() {
  _mm_sfence();
}

}  // namespace simd
