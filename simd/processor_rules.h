// What follows from what a processor says of itself.
#ifndef SIMD_PROCESSOR_RULES_H
#define SIMD_PROCESSOR_RULES_H

#include <span>

#include "simd/processor.h"

namespace simd {

// Each level asks for those before it as well.
Level LevelOf(const Features& features);

// A cache that holds data.
struct Cache {
  unsigned level = 1;
  std::size_t bytes = 0;
  std::size_t threads = 1;  // that share it
};

// The second level counts as a core's own though two threads of it share it; the
// levels beyond are divided among those who share them. Without any cache: what
// small processors have.
Caches CachesOf(std::span<const Cache> caches);

}  // namespace simd

#endif
