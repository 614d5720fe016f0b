// The vectors of AVX2. Only for sources that are compiled for that level.
#ifndef SIMD_VECTOR_AVX2_H
#define SIMD_VECTOR_AVX2_H

#include <immintrin.h>

#include <cstddef>

namespace simd {

struct VectorAvx2 {
  using Type = __m256i;
  static constexpr std::size_t BYTES = sizeof(Type);

  static Type Load(const void* from) { return _mm256_loadu_si256(static_cast<const Type*>(from)); }
  static void Store(void* to, Type vector) { _mm256_storeu_si256(static_cast<Type*>(to), vector); }
  // To a multiple of BYTES, past the caches.
  static void Stream(void* to, Type vector) { _mm256_stream_si256(static_cast<Type*>(to), vector); }
};

}  // namespace simd

#endif
