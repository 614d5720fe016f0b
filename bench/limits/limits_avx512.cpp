// The hollow kernels for AVX-512.
#include "bench/limits/hollow.h"
#include "simd/vector_avx512.h"

namespace bench {
namespace {

struct Vector : simd::VectorAvx512 {};

}  // namespace

HollowRow HollowRowAvx512(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
