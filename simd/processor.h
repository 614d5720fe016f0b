// What the processor offers: its widest vectors and its caches.
#ifndef SIMD_PROCESSOR_H
#define SIMD_PROCESSOR_H

#include <array>
#include <cstddef>

namespace simd {

// Sets of vector instructions, each with all of those before it.
enum class Level : int {
  Baseline,  // what every 64-bit processor has
  Sse41,     // SSSE3 and SSE4.1
  Avx2,      // AVX2 and FMA
  Avx512,    // AVX-512 F, BW, DQ and VL
};

inline constexpr std::array ALL_LEVELS = {Level::Baseline, Level::Sse41, Level::Avx2,
                                          Level::Avx512};

// "baseline", "SSE4.1", "AVX2" or "AVX-512".
const char* NameOf(Level level);

// The sets of instructions that processor and system support.
struct Features {
  bool ssse3 = false;
  bool sse41 = false;
  bool avx2 = false;
  bool fma = false;
  bool avx512 = false;  // F, BW, DQ and VL
};

// The processor is asked once; any thread may call.
const Features& ProcessorFeatures();

// The highest level that both the processor and the system support. The
// processor is asked once; any thread may call.
Level ProcessorLevel();

// Sizes in bytes, as the processor tells them; where it tells nothing, what
// small processors have.
struct Caches {
  std::size_t own;     // the largest that a core has to itself
  std::size_t shared;  // a core's share of the last level; no less than `own`
};

// Asked once; any thread may call.
const Caches& ProcessorCaches();

}  // namespace simd

#endif
