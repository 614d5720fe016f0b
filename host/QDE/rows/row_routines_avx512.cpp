// The routines of processors with AVX-512. This file alone is compiled for them:
// what other files share with it would fail on lesser ones, so that it uses
// no inline function or template from outside.
#include <immintrin.h>

#include <cstring>

#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

using Vector = __m512i;
constexpr std::size_t kVectorBytes = sizeof(Vector);

inline Vector Load(const std::uint8_t* bytes) {
  return _mm512_loadu_si512(reinterpret_cast<const __m512i*>(bytes));
}
inline void Store(std::uint8_t* bytes, Vector vector) {
  _mm512_storeu_si512(reinterpret_cast<__m512i*>(bytes), vector);
}
inline Vector Spread32(std::uint32_t word) {
  return _mm512_set1_epi32(static_cast<int>(word));
}
inline Vector Spread64(std::uint64_t word) {
  return _mm512_set1_epi64(static_cast<long long>(word));
}

inline Vector And(Vector a, Vector b) {
  return _mm512_and_si512(a, b);
}
inline Vector Or8(Vector a, Vector b) {
  return _mm512_or_si512(a, b);
}
inline Vector Xor(Vector a, Vector b) {
  return _mm512_xor_si512(a, b);
}
inline Vector Not(Vector a) {
  return _mm512_ternarylogic_epi32(a, a, a, 0x55);
}
// Bit by bit.
inline Vector Select(Vector mask, Vector ones, Vector zeros) {
  return _mm512_ternarylogic_epi32(mask, ones, zeros, 0xCA);
}

// Numbers of 8, 16 and 32 bits; none has a sign.
inline Vector Add8(Vector a, Vector b) {
  return _mm512_add_epi8(a, b);
}
inline Vector Sub8(Vector a, Vector b) {
  return _mm512_sub_epi8(a, b);
}
inline Vector AddSaturated8(Vector a, Vector b) {
  return _mm512_adds_epu8(a, b);
}
inline Vector SubSaturated8(Vector a, Vector b) {
  return _mm512_subs_epu8(a, b);
}
inline Vector Min8(Vector a, Vector b) {
  return _mm512_min_epu8(a, b);
}
inline Vector Max8(Vector a, Vector b) {
  return _mm512_max_epu8(a, b);
}
inline Vector Add16(Vector a, Vector b) {
  return _mm512_add_epi16(a, b);
}
inline Vector Sub16(Vector a, Vector b) {
  return _mm512_sub_epi16(a, b);
}
inline Vector AddSaturated16(Vector a, Vector b) {
  return _mm512_adds_epu16(a, b);
}
inline Vector Multiply16(Vector a, Vector b) {
  return _mm512_mullo_epi16(a, b);
}
inline Vector MultiplyHigh16(Vector a, Vector b) {
  return _mm512_mulhi_epu16(a, b);
}

// All ones where equal, else 0.
inline Vector Equal8(Vector a, Vector b) {
  return _mm512_movm_epi8(_mm512_cmpeq_epi8_mask(a, b));
}
inline Vector Equal16(Vector a, Vector b) {
  return _mm512_movm_epi16(_mm512_cmpeq_epi16_mask(a, b));
}
inline Vector Equal32(Vector a, Vector b) {
  return _mm512_movm_epi32(_mm512_cmpeq_epi32_mask(a, b));
}

// Bytes as numbers of 16 bits, and back: in an order that PackBytes undoes.
inline Vector LowNumbers(Vector bytes) {
  return _mm512_unpacklo_epi8(bytes, _mm512_setzero_si512());
}
inline Vector HighNumbers(Vector bytes) {
  return _mm512_unpackhi_epi8(bytes, _mm512_setzero_si512());
}
inline Vector LowTwice8(Vector bytes) {
  return _mm512_unpacklo_epi8(bytes, bytes);
}
inline Vector HighTwice8(Vector bytes) {
  return _mm512_unpackhi_epi8(bytes, bytes);
}
inline Vector PackBytes(Vector low, Vector high) {
  return _mm512_packus_epi16(low, high);
}

// Signed numbers of 16 bits; pairs of bytes become one such number.
inline Vector LowPairs8(Vector a, Vector b) {
  return _mm512_unpacklo_epi8(a, b);
}
inline Vector HighPairs8(Vector a, Vector b) {
  return _mm512_unpackhi_epi8(a, b);
}
// Sums of two products of a byte and a signed byte.
inline Vector MultiplyPairs8(Vector bytes, Vector factors) {
  return _mm512_maddubs_epi16(bytes, factors);
}
inline Vector MultiplyHighSigned16(Vector a, Vector b) {
  return _mm512_mulhi_epi16(a, b);
}
template <int bits>
inline Vector ShiftSigned16(Vector numbers) {
  return _mm512_srai_epi16(numbers, bits);
}
inline Vector PackSigned(Vector low, Vector high) {
  return _mm512_packs_epi16(low, high);
}

// GCC 12 takes the forms without a mask for uses of something uninitialised.
constexpr __mmask16 kAll = 0xFFFF;

// Of two vectors in a row; and the halves of one.
inline Vector EvenPixels(Vector a, Vector b) {
  const Vector even = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
  return _mm512_permutex2var_epi32(a, even, b);
}
inline Vector OddPixels(Vector a, Vector b) {
  const Vector odd = _mm512_setr_epi32(1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
  return _mm512_permutex2var_epi32(a, odd, b);
}
inline Vector FirstPixelsTwice(Vector pixels) {
  const Vector first = _mm512_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7);
  return _mm512_maskz_permutexvar_epi32(kAll, first, pixels);
}
inline Vector LastPixelsTwice(Vector pixels) {
  const Vector last = _mm512_setr_epi32(8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14, 15, 15);
  return _mm512_maskz_permutexvar_epi32(kAll, last, pixels);
}

inline Vector LoadEach32(const std::uint8_t* words, Vector positions) {
  return _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), kAll, positions,
                                     reinterpret_cast<const int*>(words), 4);
}

// One byte each, as a word; three more are read.
inline Vector LoadEach8(const std::uint8_t* bytes, Vector positions) {
  const Vector words = _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), kAll, positions,
                                                   reinterpret_cast<const int*>(bytes), 1);
  return And(words, Spread32(0xFF));
}
// Bytes as words, and four vectors of such words as bytes.
inline Vector LoadWords(const std::uint8_t* bytes) {
  const __m128i packed = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
  return _mm512_maskz_cvtepu8_epi32(kAll, packed);
}
inline Vector PackWords(Vector a, Vector b, Vector c, Vector d) {
  const Vector bytes = _mm512_packus_epi16(_mm512_packus_epi32(a, b), _mm512_packus_epi32(c, d));
  const Vector order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
  return _mm512_maskz_permutexvar_epi32(kAll, order, bytes);
}
// Sums of two products of signed numbers.
inline Vector MultiplyPairs16(Vector numbers, Vector factors) {
  return _mm512_madd_epi16(numbers, factors);
}

#include "host/QDE/rows/vector_colors.h"
#include "host/QDE/rows/vector_gather.h"
#include "host/QDE/rows/vector_modes.h"
#include "host/QDE/rows/vector_scaling.h"

}  // namespace

constinit const LevelRoutines kAvx512Routines = {
    {kCopyRoutines,
     Same<Or>(),
     Same<Exclusive>(),
     Same<Bic>(),
     kNotCopyRoutines,
     Same<NotOr>(),
     Same<NotExclusive>(),
     Same<NotBic>(),
     {BlendPixels, BlendPixels},
     Same<AddPin>(),
     Same<AddOver>(),
     Same<SubPin>(),
     Same<Transparent>(),
     Same<Maximum>(),
     Same<SubOver>(),
     Same<Minimum>(),
     Same<Hilite>()},
    {Halve, Twice, Gather},
    {Find, Show},
};

}  // namespace qde
