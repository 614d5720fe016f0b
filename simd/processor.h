// The instructions of processors, and the levels that they are grouped in.
#ifndef SIMD_PROCESSOR_H
#define SIMD_PROCESSOR_H

#include <array>

namespace simd {

// Sets of vector instructions, each with all of those before it.
enum class Level : int {
  Baseline,  // of every 64-bit processor
  Sse41,     // SSSE3 and SSE4.1
  Avx2,      // AVX2 and FMA
  Avx512,    // AVX-512 F, BW, DQ and VL
};

inline constexpr std::array kAllLevels = {Level::Baseline, Level::Sse41, Level::Avx2,
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

// Read once; any thread may call.
const Features& ProcessorFeatures();

// The highest level with all of its features and those of the levels below.
Level LevelOf(const Features& features);

}  // namespace simd

#endif
