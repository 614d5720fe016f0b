#include <cpuid.h>

#include <array>
#include <cstddef>
#include <span>

#include "simd/processor.h"
#include "simd/processor_rules.h"

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

// Leaves 4 (Intel) and 8000001D (AMD) list the caches in the same layout.
constexpr unsigned END_OF_LIST = 0;
constexpr unsigned INSTRUCTIONS = 2;

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

// The end of the list at once where the processor has no such leaf.
Registers AskForCache(unsigned leaf, unsigned range, unsigned index) {
  return Ask(range, 0).a >= leaf ? Ask(leaf, index) : Registers{};
}

// More than any processor has. A fixed number needs no memory, which the first
// conversion may not get.
constexpr unsigned MOST_CACHES = 16;
struct CacheList {
  std::array<Cache, MOST_CACHES> caches{};
  std::size_t count = 0;
};

CacheList ReadCaches(unsigned leaf, unsigned range) {
  CacheList list;
  for (unsigned index = 0; index < MOST_CACHES; ++index) {
    const Registers answer = AskForCache(leaf, range, index);
    if (TypeOf(answer) == END_OF_LIST) break;
    if (TypeOf(answer) != INSTRUCTIONS) list.caches[list.count++] = CacheOf(answer);
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

}  // namespace simd
