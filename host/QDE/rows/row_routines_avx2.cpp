// The routines of processors with AVX2. This file alone is compiled for them:
// what other files share with it would fail on lesser ones, so that it uses
// no inline function or template from outside.
#include <immintrin.h>

#include <cstring>

#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

using Vector = __m256i;
constexpr std::size_t kVectorBytes = sizeof(Vector);

inline Vector Load(const std::uint8_t* bytes) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}
inline void Store(std::uint8_t* bytes, Vector vector) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), vector);
}
inline Vector Spread32(std::uint32_t word) {
  return _mm256_set1_epi32(static_cast<int>(word));
}
inline Vector Spread64(std::uint64_t word) {
  return _mm256_set1_epi64x(static_cast<long long>(word));
}

inline Vector And(Vector a, Vector b) {
  return _mm256_and_si256(a, b);
}
inline Vector Or8(Vector a, Vector b) {
  return _mm256_or_si256(a, b);
}
inline Vector Xor(Vector a, Vector b) {
  return _mm256_xor_si256(a, b);
}
inline Vector Not(Vector a) {
  return _mm256_xor_si256(a, _mm256_set1_epi32(-1));
}
// Bit by bit.
inline Vector Select(Vector mask, Vector ones, Vector zeros) {
  return _mm256_or_si256(_mm256_and_si256(mask, ones), _mm256_andnot_si256(mask, zeros));
}

// Numbers of 8, 16 and 32 bits; none has a sign.
inline Vector Add8(Vector a, Vector b) {
  return _mm256_add_epi8(a, b);
}
inline Vector Sub8(Vector a, Vector b) {
  return _mm256_sub_epi8(a, b);
}
inline Vector AddSaturated8(Vector a, Vector b) {
  return _mm256_adds_epu8(a, b);
}
inline Vector SubSaturated8(Vector a, Vector b) {
  return _mm256_subs_epu8(a, b);
}
inline Vector Min8(Vector a, Vector b) {
  return _mm256_min_epu8(a, b);
}
inline Vector Max8(Vector a, Vector b) {
  return _mm256_max_epu8(a, b);
}
inline Vector Add16(Vector a, Vector b) {
  return _mm256_add_epi16(a, b);
}
inline Vector Sub16(Vector a, Vector b) {
  return _mm256_sub_epi16(a, b);
}
inline Vector AddSaturated16(Vector a, Vector b) {
  return _mm256_adds_epu16(a, b);
}
inline Vector Multiply16(Vector a, Vector b) {
  return _mm256_mullo_epi16(a, b);
}
inline Vector MultiplyHigh16(Vector a, Vector b) {
  return _mm256_mulhi_epu16(a, b);
}

// All ones where equal, else 0.
inline Vector Equal8(Vector a, Vector b) {
  return _mm256_cmpeq_epi8(a, b);
}
inline Vector Equal16(Vector a, Vector b) {
  return _mm256_cmpeq_epi16(a, b);
}
inline Vector Equal32(Vector a, Vector b) {
  return _mm256_cmpeq_epi32(a, b);
}

// Bytes as numbers of 16 bits, and back: in an order that PackBytes undoes.
inline Vector LowNumbers(Vector bytes) {
  return _mm256_unpacklo_epi8(bytes, _mm256_setzero_si256());
}
inline Vector HighNumbers(Vector bytes) {
  return _mm256_unpackhi_epi8(bytes, _mm256_setzero_si256());
}
inline Vector LowTwice8(Vector bytes) {
  return _mm256_unpacklo_epi8(bytes, bytes);
}
inline Vector HighTwice8(Vector bytes) {
  return _mm256_unpackhi_epi8(bytes, bytes);
}
inline Vector PackBytes(Vector low, Vector high) {
  return _mm256_packus_epi16(low, high);
}

// Signed numbers of 16 bits; pairs of bytes become one such number.
inline Vector LowPairs8(Vector a, Vector b) {
  return _mm256_unpacklo_epi8(a, b);
}
inline Vector HighPairs8(Vector a, Vector b) {
  return _mm256_unpackhi_epi8(a, b);
}
// Sums of two products of a byte and a signed byte.
inline Vector MultiplyPairs8(Vector bytes, Vector factors) {
  return _mm256_maddubs_epi16(bytes, factors);
}
inline Vector MultiplyHighSigned16(Vector a, Vector b) {
  return _mm256_mulhi_epi16(a, b);
}
template <int bits>
inline Vector ShiftSigned16(Vector numbers) {
  return _mm256_srai_epi16(numbers, bits);
}
inline Vector PackSigned(Vector low, Vector high) {
  return _mm256_packs_epi16(low, high);
}

// Of two vectors in a row; and the halves of one.
inline Vector EvenPixels(Vector a, Vector b) {
  const __m256 even = _mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), 0x88);
  return _mm256_permute4x64_epi64(_mm256_castps_si256(even), 0xD8);
}
inline Vector OddPixels(Vector a, Vector b) {
  const __m256 odd = _mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), 0xDD);
  return _mm256_permute4x64_epi64(_mm256_castps_si256(odd), 0xD8);
}
inline Vector FirstPixelsTwice(Vector pixels) {
  return _mm256_permutevar8x32_epi32(pixels, _mm256_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3));
}
inline Vector LastPixelsTwice(Vector pixels) {
  return _mm256_permutevar8x32_epi32(pixels, _mm256_setr_epi32(4, 4, 5, 5, 6, 6, 7, 7));
}

inline Vector LoadEach32(const std::uint8_t* words, Vector positions) {
  return _mm256_i32gather_epi32(reinterpret_cast<const int*>(words), positions, 4);
}

// One byte each, as a word; three more are read.
inline Vector LoadEach8(const std::uint8_t* bytes, Vector positions) {
  const Vector words = _mm256_i32gather_epi32(reinterpret_cast<const int*>(bytes), positions, 1);
  return And(words, Spread32(0xFF));
}
// Bytes as words, and four vectors of such words as bytes.
inline Vector LoadWords(const std::uint8_t* bytes) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes)));
}
inline Vector PackWords(Vector a, Vector b, Vector c, Vector d) {
  const Vector bytes = _mm256_packus_epi16(_mm256_packus_epi32(a, b), _mm256_packus_epi32(c, d));
  return _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7));
}
// Sums of two products of signed numbers.
inline Vector MultiplyPairs16(Vector numbers, Vector factors) {
  return _mm256_madd_epi16(numbers, factors);
}

#include "host/QDE/rows/vector_colors.h"
#include "host/QDE/rows/vector_gather.h"
#include "host/QDE/rows/vector_modes.h"
#include "host/QDE/rows/vector_scaling.h"

}  // namespace

constinit const LevelRoutines kAvx2Routines = {
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
