// Reads the processor's lists of caches and sums them up.
#include "simd/processor_caches.h"

#include <cpuid.h>

#include <algorithm>
#include <array>

namespace simd {
namespace {

struct Registers {
  unsigned a, b, c, d;
};

Registers ReadLeaf(unsigned leaf, unsigned subleaf) {
  Registers r{};
  __cpuid_count(leaf, subleaf, r.a, r.b, r.c, r.d);
  return r;
}

// `count` bits of a register, from bit `first` on.
constexpr unsigned Bits(unsigned value, unsigned first, unsigned count) {
  return (value >> first) & ((1U << count) - 1);
}

// Leaves 4 (Intel) and 8000001D (AMD) list the caches in the same layout.
constexpr unsigned kEndOfList = 0;
constexpr unsigned kInstructions = 2;

unsigned TypeOf(const Registers& r) {
  return Bits(r.a, 0, 5);
}

Cache CacheOf(const Registers& r) {
  const std::size_t ways = Bits(r.b, 22, 10) + 1U;
  const std::size_t partitions = Bits(r.b, 12, 10) + 1U;
  const std::size_t line = Bits(r.b, 0, 12) + 1U;
  const std::size_t sets = std::size_t{r.c} + 1;
  return {Bits(r.a, 5, 3), ways * partitions * line * sets, Bits(r.a, 14, 12) + std::size_t{1}};
}

// Without such a leaf, the end of the list.
Registers ReadCache(unsigned leaf, unsigned range, unsigned index) {
  return ReadLeaf(range, 0).a >= leaf ? ReadLeaf(leaf, index) : Registers{};
}

// More than any processor has. A list of fixed size needs no allocation, which could
// fail in the first conversion.
constexpr unsigned kMostCaches = 16;
struct CacheList {
  std::array<Cache, kMostCaches> caches{};
  std::size_t count = 0;
};

CacheList ReadCaches(unsigned leaf, unsigned range) {
  CacheList list;
  for (unsigned index = 0; index < kMostCaches; ++index) {
    const Registers answer = ReadCache(leaf, range, index);
    if (TypeOf(answer) == kEndOfList) break;
    if (TypeOf(answer) != kInstructions) list.caches[list.count++] = CacheOf(answer);
  }
  return list;
}

Caches FindCaches() {
  CacheList list = ReadCaches(4, 0);
  if (list.count == 0) list = ReadCaches(0x8000001D, 0x80000000);
  return CachesOf(std::span(list.caches).first(list.count));
}

}  // namespace

const Caches& ProcessorCaches() {
  static const Caches caches = FindCaches();
  return caches;
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
