#include "simd/processor_rules.h"

#include <algorithm>

namespace simd {

const char* NameOf(Level level) {
  switch (level) {
    case Level::Sse41:
      return "SSE4.1";
    case Level::Avx2:
      return "AVX2";
    case Level::Avx512:
      return "AVX-512";
    default:
      return "baseline";
  }
}

Level LevelOf(const Features& features) {
  Level level = Level::Baseline;
  if (features.ssse3 && features.sse41) level = Level::Sse41;
  if (level == Level::Sse41 && features.avx2 && features.fma) level = Level::Avx2;
  if (level == Level::Avx2 && features.avx512) level = Level::Avx512;
  return level;
}

Caches CachesOf(std::span<const Cache> caches) {
  if (caches.empty()) return {std::size_t{256} * 1024, std::size_t{1024} * 1024};
  Caches found{};
  for (const Cache& cache : caches) {
    if (cache.level <= 2) found.own = std::max(found.own, cache.bytes);
    found.shared = std::max(found.shared, cache.bytes / cache.threads);
  }
  found.shared = std::max(found.own, found.shared);
  return found;
}

}  // namespace simd
