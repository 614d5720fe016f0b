#include <immintrin.h>

#include "bench/limits/hollow.h"

namespace bench {
namespace {

struct Vector {
  using Lanes = __m512i;
  static constexpr int kBytes = 64;
  static Lanes Zero() { return _mm512_setzero_si512(); }
  static Lanes Load(const std::uint8_t* from) { return _mm512_loadu_si512(from); }
  static void Store(std::uint8_t* to, Lanes lanes) { _mm512_storeu_si512(to, lanes); }
  static void Stream(std::uint8_t* to, Lanes lanes) {
    _mm512_stream_si512(reinterpret_cast<Lanes*>(to), lanes);
  }
  static Lanes Xor(Lanes a, Lanes b) { return _mm512_xor_si512(a, b); }
};

}  // namespace

HollowRow HollowRowAvx512(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
