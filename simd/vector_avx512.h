// The vectors of AVX-512. Only for sources that are compiled for that level.
#ifndef SIMD_VECTOR_AVX512_H
#define SIMD_VECTOR_AVX512_H

#include <immintrin.h>

#include <cstddef>

namespace simd {

struct VectorAvx512 {
  using Type = __m512i;
  static constexpr std::size_t BYTES = sizeof(Type);

  static Type Load(const void* from) { return _mm512_loadu_si512(static_cast<const Type*>(from)); }
  static void Store(void* to, Type vector) { _mm512_storeu_si512(static_cast<Type*>(to), vector); }
  // To a multiple of BYTES, past the caches.
  static void Stream(void* to, Type vector) { _mm512_stream_si512(static_cast<Type*>(to), vector); }
};

}  // namespace simd

#endif
