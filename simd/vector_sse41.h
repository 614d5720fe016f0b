// The vectors of SSE4.1. Only for sources that are compiled for that level.
#ifndef SIMD_VECTOR_SSE41_H
#define SIMD_VECTOR_SSE41_H

#include <smmintrin.h>

#include <cstddef>

namespace simd {

struct VectorSse41 {
  using Type = __m128i;
  static constexpr std::size_t BYTES = sizeof(Type);

  static Type Load(const void* from) { return _mm_loadu_si128(static_cast<const Type*>(from)); }
  static void Store(void* to, Type vector) { _mm_storeu_si128(static_cast<Type*>(to), vector); }
  // To a multiple of BYTES, past the caches.
  static void Stream(void* to, Type vector) { _mm_stream_si128(static_cast<Type*>(to), vector); }
};

}  // namespace simd

#endif
