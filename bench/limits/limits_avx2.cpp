// The hollow kernels for AVX2.
#include "bench/limits/hollow.h"
#include "simd/vector_avx2.h"

namespace bench {
namespace {

struct Vector : simd::VectorAvx2 {};

}  // namespace

HollowRow HollowRowAvx2(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
