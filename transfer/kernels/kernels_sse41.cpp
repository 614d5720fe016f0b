// Conversions in vectors of SSE4.1; vector_factors.h explains the arithmetic.
#include "transfer/kernels/kernels_sse41.h"

#include <cstdint>

#include "simd/vector_sse41.h"
#include "transfer/kernels/channel_formulas.h"
#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/vector_factors.h"
#include "transfer/kernels/vector_rows.h"

namespace {

using Vector = simd::VectorSse41;

struct From8to16 : Vector {
  using Source = std::uint8_t;
  using Destination = std::uint16_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8to16;

  static Type Convert(const Source* from) {
    const Type c = _mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(from)));
    const Type fraction = _mm_mulhrs_epi16(c, _mm_set1_epi16(PXLp_kFraction8to16));
    return _mm_add_epi16(_mm_slli_epi16(c, 7), fraction);
  }
};

struct From8toF : Vector {
  using Source = std::uint8_t;
  using Destination = float;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8toF;

  static Type Convert(const Source* from) {
    const Type c = _mm_cvtepu8_epi32(_mm_loadu_si32(from));
    const __m128 low = Scaled(c);
    const __m128 high = Scaled(_mm_unpackhi_epi64(c, c));
    return _mm_castps_si128(_mm_movelh_ps(low, high));
  }

 private:
  // Converts the lower two channels.
  static __m128 Scaled(Type channels) {
    const __m128d c = _mm_cvtepi32_pd(channels);
    return _mm_cvtpd_ps(_mm_mul_pd(c, _mm_set1_pd(PXLp_kReciprocal255)));
  }
};

struct From16to8 : Vector {
  using Source = std::uint16_t;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow16to8;

  static Type Convert(const Source* from) {
    return _mm_packus_epi16(Rounded(Load(from)), Rounded(Load(from + 8)));
  }

 private:
  static Type Rounded(Type v) {
    const Type doubled = _mm_mulhi_epu16(v, _mm_set1_epi16(PXLp_kFactor16to8));
    const Type rounded = _mm_avg_epu16(doubled, _mm_setzero_si128());
    return _mm_and_si128(rounded, _mm_set1_epi16(0xFF));
  }
};

struct FromFto8 : Vector {
  using Source = float;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRowFto8;

  static Type Convert(const Source* from) {
    const Type low = _mm_packs_epi32(Truncated(from), Truncated(from + 4));
    const Type high = _mm_packs_epi32(Truncated(from + 8), Truncated(from + 12));
    return _mm_packus_epi16(low, high);
  }

 private:
  static Type Truncated(const Source* from) {
    const __m128 scale = _mm_set1_ps(255.0F);
    return _mm_cvttps_epi32(_mm_min_ps(scale, _mm_mul_ps(_mm_loadu_ps(from), scale)));
  }
};

}  // namespace

constinit const PXLp_KernelSet PXLp_kSse41Kernels = {
    PXLp_kVectorKernels<From8to16>, PXLp_kVectorKernels<From8toF>, PXLp_kVectorKernels<From16to8>,
    PXLp_kVectorKernels<FromFto8>};
