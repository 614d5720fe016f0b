#include "simd/processor.h"

namespace simd {
namespace {

// The compiler's runtime asks when it is loaded, and also whether the system
// saves the wide registers.
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

const Features& ProcessorFeatures() {
  static const Features features = ReadFeatures();
  return features;
}

}  // namespace simd
