#include <immintrin.h>

#include "bench/limits/hollow.h"

namespace bench {
namespace {

struct Vector {
  using Lanes = __m128i;
  static constexpr int kBytes = 16;
  static Lanes Zero() { return _mm_setzero_si128(); }
  static Lanes Load(const std::uint8_t* from) {
    return _mm_loadu_si128(reinterpret_cast<const Lanes*>(from));
  }
  static void Store(std::uint8_t* to, Lanes lanes) {
    _mm_storeu_si128(reinterpret_cast<Lanes*>(to), lanes);
  }
  static void Stream(std::uint8_t* to, Lanes lanes) {
    _mm_stream_si128(reinterpret_cast<Lanes*>(to), lanes);
  }
  static Lanes Xor(Lanes a, Lanes b) { return _mm_xor_si128(a, b); }
};

}  // namespace

HollowRow HollowRowSse41(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
