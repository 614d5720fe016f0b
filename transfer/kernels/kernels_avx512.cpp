// Conversions in vectors of AVX-512; vector_factors.h explains the arithmetic.
#include "transfer/kernels/kernels_avx512.h"

#include <cstdint>

#include "simd/vector_avx512.h"
#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/vector_factors.h"
#include "transfer/kernels/vector_rows.h"

namespace {

using Vector = simd::VectorAvx512;

struct From8to16 : Vector {
  using Source = std::uint8_t;
  using Destination = std::uint16_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8to16;

  static Type Convert(const Source* from) {
    const Type c = _mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(from)));
    const Type fraction = _mm512_mulhrs_epi16(c, _mm512_set1_epi16(PXLp_kFraction8to16));
    return _mm512_add_epi16(_mm512_slli_epi16(c, 7), fraction);
  }
};

struct From8toF : Vector {
  using Source = std::uint8_t;
  using Destination = float;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8toF;

  static Type Convert(const Source* from) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m512 c = _mm512_cvtepi32_ps(_mm512_cvtepu8_epi32(bytes));
    const __m512 rest = _mm512_mul_ps(c, _mm512_set1_ps(PXLp_kReciprocal255Rest));
    return _mm512_castps_si512(
        _mm512_fmadd_ps(c, _mm512_set1_ps(PXLp_kReciprocal255Nearest), rest));
  }
};

struct From16to8 : Vector {
  using Source = std::uint16_t;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow16to8;

  // Packing works within the quarters of a vector.
  static Type Convert(const Source* from) {
    const Type packed = _mm512_packus_epi16(Rounded(Load(from)), Rounded(Load(from + 32)));
    return _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), packed);
  }

 private:
  static Type Rounded(Type v) {
    const Type doubled = _mm512_mulhi_epu16(v, _mm512_set1_epi16(PXLp_kFactor16to8));
    const Type rounded = _mm512_avg_epu16(doubled, _mm512_setzero_si512());
    return _mm512_and_si512(rounded, _mm512_set1_epi16(0xFF));
  }
};

struct FromFto8 : Vector {
  using Source = float;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRowFto8;

  // Packing works within the quarters of a vector.
  static Type Convert(const Source* from) {
    const Type low = _mm512_packs_epi32(Truncated(from), Truncated(from + 16));
    const Type high = _mm512_packs_epi32(Truncated(from + 32), Truncated(from + 48));
    const Type order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return _mm512_permutexvar_epi32(order, _mm512_packus_epi16(low, high));
  }

 private:
  static Type Truncated(const Source* from) {
    const __m512 scale = _mm512_set1_ps(255.0F);
    return _mm512_cvttps_epi32(_mm512_min_ps(scale, _mm512_mul_ps(_mm512_loadu_ps(from), scale)));
  }
};

}  // namespace

constinit const PXLp_KernelSet PXLp_kAvx512Kernels = {
    PXLp_kVectorKernels<From8to16>, PXLp_kVectorKernels<From8toF>, PXLp_kVectorKernels<From16to8>,
    PXLp_kVectorKernels<FromFto8>};
