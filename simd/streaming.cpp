#include "simd/streaming.h"

#include <emmintrin.h>

#include "simd/processor.h"

namespace simd {

Stores StoresFor(std::size_t bytesRead, std::size_t bytesWritten) {
  return bytesRead + bytesWritten > ProcessorCaches().own ? Stores::Streaming : Stores::Caching;
}

void FinishStreaming() {
  _mm_sfence();
}

}  // namespace simd
