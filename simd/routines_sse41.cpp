#include "simd/level_routines.h"
#include "simd/vector_loops.h"
#include "simd/vector_sse41.h"

namespace simd {
namespace {

struct Words : VectorSse41 {
  static Type OfWord(std::uint32_t word) { return _mm_set1_epi32(static_cast<int>(word)); }
  static Type Reversed(Type words) {
    return _mm_shuffle_epi8(words,
                            _mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
  }
};

}  // namespace

constinit const Routines ROUTINES_SSE41 = VectorRoutines<Words>();

}  // namespace simd
