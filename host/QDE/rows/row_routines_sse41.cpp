// The routines of processors with SSE4.1. This file alone is compiled for them:
// what other files share with it would fail on lesser ones, so that it uses
// no inline function or template from outside.
#include <immintrin.h>

#include <cstring>

#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

using Vector = __m128i;
constexpr std::size_t kVectorBytes = sizeof(Vector);

inline Vector Load(const std::uint8_t* bytes) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
inline void Store(std::uint8_t* bytes, Vector vector) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), vector);
}
inline Vector Spread32(std::uint32_t word) {
  return _mm_set1_epi32(static_cast<int>(word));
}
inline Vector Spread64(std::uint64_t word) {
  return _mm_set1_epi64x(static_cast<long long>(word));
}

inline Vector And(Vector a, Vector b) {
  return _mm_and_si128(a, b);
}
inline Vector Or8(Vector a, Vector b) {
  return _mm_or_si128(a, b);
}
inline Vector Xor(Vector a, Vector b) {
  return _mm_xor_si128(a, b);
}
inline Vector Not(Vector a) {
  return _mm_xor_si128(a, _mm_set1_epi32(-1));
}
// Bit by bit.
inline Vector Select(Vector mask, Vector ones, Vector zeros) {
  return _mm_or_si128(_mm_and_si128(mask, ones), _mm_andnot_si128(mask, zeros));
}

// Numbers of 8, 16 and 32 bits; none has a sign.
inline Vector Add8(Vector a, Vector b) {
  return _mm_add_epi8(a, b);
}
inline Vector Sub8(Vector a, Vector b) {
  return _mm_sub_epi8(a, b);
}
inline Vector AddSaturated8(Vector a, Vector b) {
  return _mm_adds_epu8(a, b);
}
inline Vector SubSaturated8(Vector a, Vector b) {
  return _mm_subs_epu8(a, b);
}
inline Vector Min8(Vector a, Vector b) {
  return _mm_min_epu8(a, b);
}
inline Vector Max8(Vector a, Vector b) {
  return _mm_max_epu8(a, b);
}
inline Vector Add16(Vector a, Vector b) {
  return _mm_add_epi16(a, b);
}
inline Vector Sub16(Vector a, Vector b) {
  return _mm_sub_epi16(a, b);
}
inline Vector AddSaturated16(Vector a, Vector b) {
  return _mm_adds_epu16(a, b);
}
inline Vector Multiply16(Vector a, Vector b) {
  return _mm_mullo_epi16(a, b);
}
inline Vector MultiplyHigh16(Vector a, Vector b) {
  return _mm_mulhi_epu16(a, b);
}

// All ones where equal, else 0.
inline Vector Equal8(Vector a, Vector b) {
  return _mm_cmpeq_epi8(a, b);
}
inline Vector Equal16(Vector a, Vector b) {
  return _mm_cmpeq_epi16(a, b);
}
inline Vector Equal32(Vector a, Vector b) {
  return _mm_cmpeq_epi32(a, b);
}

// Bytes as numbers of 16 bits, and back: in an order that PackBytes undoes.
inline Vector LowNumbers(Vector bytes) {
  return _mm_unpacklo_epi8(bytes, _mm_setzero_si128());
}
inline Vector HighNumbers(Vector bytes) {
  return _mm_unpackhi_epi8(bytes, _mm_setzero_si128());
}
inline Vector LowTwice8(Vector bytes) {
  return _mm_unpacklo_epi8(bytes, bytes);
}
inline Vector HighTwice8(Vector bytes) {
  return _mm_unpackhi_epi8(bytes, bytes);
}
inline Vector PackBytes(Vector low, Vector high) {
  return _mm_packus_epi16(low, high);
}

// Signed numbers of 16 bits; pairs of bytes become one such number.
inline Vector LowPairs8(Vector a, Vector b) {
  return _mm_unpacklo_epi8(a, b);
}
inline Vector HighPairs8(Vector a, Vector b) {
  return _mm_unpackhi_epi8(a, b);
}
// Sums of two products of a byte and a signed byte.
inline Vector MultiplyPairs8(Vector bytes, Vector factors) {
  return _mm_maddubs_epi16(bytes, factors);
}
inline Vector MultiplyHighSigned16(Vector a, Vector b) {
  return _mm_mulhi_epi16(a, b);
}
template <int bits>
inline Vector ShiftSigned16(Vector numbers) {
  return _mm_srai_epi16(numbers, bits);
}
inline Vector PackSigned(Vector low, Vector high) {
  return _mm_packs_epi16(low, high);
}

// Of two vectors in a row; and the halves of one.
inline Vector EvenPixels(Vector a, Vector b) {
  return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), 0x88));
}
inline Vector OddPixels(Vector a, Vector b) {
  return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), 0xDD));
}
inline Vector FirstPixelsTwice(Vector pixels) {
  return _mm_unpacklo_epi32(pixels, pixels);
}
inline Vector LastPixelsTwice(Vector pixels) {
  return _mm_unpackhi_epi32(pixels, pixels);
}

#include "host/QDE/rows/vector_modes.h"
#include "host/QDE/rows/vector_scaling.h"

}  // namespace

constinit const LevelRoutines kSse41Routines = {
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
    {Halve, Twice, nullptr},
    {nullptr, nullptr},
};

}  // namespace qde
