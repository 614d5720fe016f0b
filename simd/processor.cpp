// Reads the features of the processor and finds the level that they make up.
#include "simd/processor.h"

namespace simd {
namespace {

// The compiler's runtime also checks that the system saves the wide registers.
Features ReadFeatures() {
  __builtin_cpu_init();
  Features features;
  features.ssse3 = __builtin_cpu_supports("ssse3");
  features.sse41 = __builtin_cpu_supports("sse4.1");
  features.avx2 = __builtin_cpu_supports("avx2");
  features.fma = __builtin_cpu_supports("fma");
  features.avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
                    __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
  return features;
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

const Features& ProcessorFeatures() {
  static const Features features = ReadFeatures();
  return features;
}

Level LevelOf(const Features& features) {
  Level level = Level::Baseline;
  if (features.ssse3 && features.sse41) level = Level::Sse41;
  if (level == Level::Sse41 && features.avx2 && features.fma) level = Level::Avx2;
  if (level == Level::Avx2 && features.avx512) level = Level::Avx512;
  return level;
}

}  // namespace simd
