// Conversions in vectors of AVX2; vector_factors.h explains the arithmetic.
#include "transfer/kernels/kernels_avx2.h"

#include <cstdint>

#include "simd/vector_avx2.h"
#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/vector_factors.h"
#include "transfer/kernels/vector_rows.h"

namespace {

using Vector = simd::VectorAvx2;

struct From8to16 : Vector {
  using Source = std::uint8_t;
  using Destination = std::uint16_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8to16;

  static Type Convert(const Source* from) {
    const Type c = _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(from)));
    const Type fraction = _mm256_mulhrs_epi16(c, _mm256_set1_epi16(PXLp_kFraction8to16));
    return _mm256_add_epi16(_mm256_slli_epi16(c, 7), fraction);
  }
};

struct From8toF : Vector {
  using Source = std::uint8_t;
  using Destination = float;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8toF;

  static Type Convert(const Source* from) {
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(from));
    const __m256 c = _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(bytes));
    const __m256 rest = _mm256_mul_ps(c, _mm256_set1_ps(PXLp_kReciprocal255Rest));
    return _mm256_castps_si256(
        _mm256_fmadd_ps(c, _mm256_set1_ps(PXLp_kReciprocal255Nearest), rest));
  }
};

struct From16to8 : Vector {
  using Source = std::uint16_t;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow16to8;

  // Packing works within the halves of a vector.
  static Type Convert(const Source* from) {
    const Type packed = _mm256_packus_epi16(Rounded(Load(from)), Rounded(Load(from + 16)));
    return _mm256_permute4x64_epi64(packed, _MM_SHUFFLE(3, 1, 2, 0));
  }

 private:
  static Type Rounded(Type v) {
    const Type doubled = _mm256_mulhi_epu16(v, _mm256_set1_epi16(PXLp_kFactor16to8));
    const Type rounded = _mm256_avg_epu16(doubled, _mm256_setzero_si256());
    return _mm256_and_si256(rounded, _mm256_set1_epi16(0xFF));
  }
};

struct FromFto8 : Vector {
  using Source = float;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRowFto8;

  // Packing works within the halves of a vector.
  static Type Convert(const Source* from) {
    const Type low = _mm256_packs_epi32(Truncated(from), Truncated(from + 8));
    const Type high = _mm256_packs_epi32(Truncated(from + 16), Truncated(from + 24));
    const Type order = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    return _mm256_permutevar8x32_epi32(_mm256_packus_epi16(low, high), order);
  }

 private:
  static Type Truncated(const Source* from) {
    const __m256 scale = _mm256_set1_ps(255.0F);
    return _mm256_cvttps_epi32(_mm256_min_ps(scale, _mm256_mul_ps(_mm256_loadu_ps(from), scale)));
  }
};

}  // namespace

constinit const PXLp_KernelSet PXLp_kAvx2Kernels = {
    PXLp_kVectorKernels<From8to16>, PXLp_kVectorKernels<From8toF>, PXLp_kVectorKernels<From16to8>,
    PXLp_kVectorKernels<FromFto8>};
