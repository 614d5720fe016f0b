// When to write past the caches.
#ifndef SIMD_STREAMING_H
#define SIMD_STREAMING_H

#include <cstddef>

namespace simd {

enum class Stores { Caching, Streaming };

// For one transfer as a whole, all of its rows together: what it reads and
// what it writes, in bytes. Both compete for the cache.
Stores StoresFor(std::size_t bytesRead, std::size_t bytesWritten);

// For one fill as a whole, in bytes.
Stores StoresForFill(std::size_t bytesWritten);

// Makes what was streamed visible to other threads. After the last row.
void FinishStreaming();

}  // namespace simd

#endif
