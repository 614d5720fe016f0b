// When stores bypass the caches.
#ifndef SIMD_STREAMING_H
#define SIMD_STREAMING_H

#include <cstddef>

namespace simd {

enum class Stores { Caching, Streaming };

// For all rows of one transfer together, in bytes. Source and destination compete
// for the cache.
Stores StoresFor(std::size_t bytesRead, std::size_t bytesWritten);

// For one fill as a whole, in bytes.
Stores StoresForFill(std::size_t bytesWritten);

// Makes streamed stores visible to other threads. Called after the last row.
void FinishStreaming();

}  // namespace simd

#endif
