// The hollow kernels for SSE4.1.
#include "bench/limits/hollow.h"
#include "simd/vector_sse41.h"

namespace bench {
namespace {

struct Vector : simd::VectorSse41 {};

}  // namespace

HollowRow HollowRowSse41(Shape shape, bool streaming) {
  return HollowOf<Vector>(shape, streaming);
}

}  // namespace bench
