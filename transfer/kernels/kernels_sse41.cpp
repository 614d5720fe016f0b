// The kernels for SSE4.1.
#include "transfer/kernels/kernels_sse41.h"

#include <cstdint>

#include "simd/vector_sse41.h"
#include "transfer/kernels/channel_formulas.h"
#include "transfer/kernels/vector_rows.h"
#include "transfer/kernels/vector_steps.h"

namespace {

struct Vector : simd::VectorSse41 {};

// In double precision: this level has no fused product and sum.
struct Convert8toF : PXLp_Convert8toF<Vector> {
  static __m128i Convert(const Source* from) {
    const __m128i c = Vector::LoadBytesAs32(from);
    const __m128 low = ScaleLowerTwo(c);
    const __m128 high = ScaleLowerTwo(_mm_unpackhi_epi64(c, c));
    return _mm_castps_si128(_mm_movelh_ps(low, high));
  }

 private:
  static __m128 ScaleLowerTwo(__m128i channels) {
    const __m128d c = _mm_cvtepi32_pd(channels);
    return _mm_cvtpd_ps(_mm_mul_pd(c, _mm_set1_pd(PXLp_kReciprocal255)));
  }
};

}  // namespace

constinit const PXLp_KernelSet PXLp_kSse41Kernels = {
    PXLp_kVectorKernels<PXLp_Convert8to16<Vector>>, PXLp_kVectorKernels<Convert8toF>,
    PXLp_kVectorKernels<PXLp_Convert16to8<Vector>>, PXLp_kVectorKernels<PXLp_ConvertFto8<Vector>>};
