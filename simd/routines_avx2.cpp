#include "simd/level_routines.h"
#include "simd/vector_avx2.h"
#include "simd/vector_loops.h"

namespace simd {
namespace {

struct Words : VectorAvx2 {
  static Type OfWord(std::uint32_t word) { return _mm256_set1_epi32(static_cast<int>(word)); }
  static Type Reversed(Type words) {
    const __m128i order = _mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12);
    return _mm256_shuffle_epi8(words, _mm256_broadcastsi128_si256(order));
  }
};

}  // namespace

constinit const Routines ROUTINES_AVX2 = VectorRoutines<Words>();

}  // namespace simd
