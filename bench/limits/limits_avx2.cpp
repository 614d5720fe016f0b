#include <immintrin.h>

#include "bench/limits/hollow.h"

namespace bench {
namespace {

struct Vector {
  using Lanes = __m256i;
  static constexpr int kBytes = 32;
  static Lanes Zero() { return _mm256_setzero_si256(); }
  static Lanes Load(const std::uint8_t* from) {
    return _mm256_loadu_si256(reinterpret_cast<const Lanes*>(from));
  }
  static void Store(std::uint8_t* to, Lanes lanes) {
    _mm256_storeu_si256(reinterpret_cast<Lanes*>(to), lanes);
  }
  static void Stream(std::uint8_t* to, Lanes lanes) {
    _mm256_stream_si256(reinterpret_cast<Lanes*>(to), lanes);
  }
  static Lanes Xor(Lanes a, Lanes b) { return _mm256_xor_si256(a, b); }
};

}  // namespace

HollowRow HollowRowAvx2(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
