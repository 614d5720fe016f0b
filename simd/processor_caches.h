// The sizes of the processor's caches.
#ifndef SIMD_PROCESSOR_CACHES_H
#define SIMD_PROCESSOR_CACHES_H

#include <cstddef>
#include <span>

namespace simd {

// In bytes.
struct Caches {
  std::size_t own;     // the largest cache of a single core
  std::size_t shared;  // a core's share of the last level; no less than `own`
};

// As the processor reports them. Read once; any thread may call.
const Caches& ProcessorCaches();

// A cache that holds data.
struct Cache {
  unsigned level = 1;
  std::size_t bytes = 0;
  std::size_t threads = 1;  // that share it
};

// The second level counts as a core's own even if two threads of it share it; higher
// levels are divided among the threads that share them. Without any cache, the sizes
// of small processors.
Caches CachesOf(std::span<const Cache> caches);

}  // namespace simd

#endif
