#include "simd/processor.h"

#include <cpuid.h>

#include <algorithm>

namespace simd {
namespace {

struct Registers {
  unsigned a, b, c, d;
};

Registers Ask(unsigned leaf, unsigned subleaf) {
  Registers r{};
  __cpuid_count(leaf, subleaf, r.a, r.b, r.c, r.d);
  return r;
}

// `count` bits of a register, from bit `first` on.
constexpr unsigned Bits(unsigned value, unsigned first, unsigned count) {
  return (value >> first) & ((1U << count) - 1);
}

// The compiler's runtime asks when it is loaded, and also whether the system
// saves the wide registers.
Level FindLevel() {
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl") &&
      __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) {
    return Level::Avx512;
  }
  if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return Level::Avx2;
  if (__builtin_cpu_supports("ssse3") && __builtin_cpu_supports("sse4.1")) return Level::Sse41;
  return Level::Baseline;
}

// One entry of the list of caches; leaves 4 (Intel) and 8000001D (AMD) have the
// same layout.
struct Cache {
  unsigned type;  // 0 ends the list, 2 holds instructions
  unsigned level;
  std::size_t bytes;
  std::size_t threads;  // that share it
};

Cache ReadCache(unsigned leaf, unsigned index) {
  const Registers r = Ask(leaf, index);
  const std::size_t ways = Bits(r.b, 22, 10) + 1U;
  const std::size_t partitions = Bits(r.b, 12, 10) + 1U;
  const std::size_t line = Bits(r.b, 0, 12) + 1U;
  const std::size_t sets = std::size_t{r.c} + 1;
  return {Bits(r.a, 0, 5), Bits(r.a, 5, 3), ways * partitions * line * sets,
          Bits(r.a, 14, 12) + std::size_t{1}};
}

// The leaf that lists the caches; 0 when there is none.
unsigned CacheLeaf() {
  constexpr unsigned intel = 4;
  constexpr unsigned amd = 0x8000001D;
  const auto has = [](unsigned leaf, unsigned range) {
    return Ask(range, 0).a >= leaf && ReadCache(leaf, 0).type != 0;
  };
  if (has(intel, 0)) return intel;
  return has(amd, 0x80000000) ? amd : 0;
}

// The second level is taken as a core's own though two threads of it share it;
// the levels beyond are divided among those who share them.
Caches FindCaches() {
  constexpr unsigned instructions = 2;
  Caches caches{std::size_t{256} * 1024, std::size_t{1024} * 1024};
  const unsigned leaf = CacheLeaf();
  if (leaf == 0) return caches;
  caches = {};
  for (unsigned index = 0;; ++index) {
    const Cache cache = ReadCache(leaf, index);
    if (cache.type == 0) break;
    if (cache.type == instructions) continue;
    if (cache.level <= 2) caches.own = std::max(caches.own, cache.bytes);
    caches.shared = std::max(caches.shared, cache.bytes / cache.threads);
  }
  caches.shared = std::max(caches.own, caches.shared);
  return caches;
}

}  // namespace

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

Level ProcessorLevel() {
  static const Level level = FindLevel();
  return level;
}

const Caches& ProcessorCaches() {
  static const Caches caches = FindCaches();
  return caches;
}

}  // namespace simd
