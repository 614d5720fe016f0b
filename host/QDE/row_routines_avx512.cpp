// The routines of processors with AVX-512. This file alone is compiled for them:
// what other files share with it would fail on lesser ones, so that it uses
// no inline function or template from outside.
#include <immintrin.h>

#include <cstring>

#include "level_routines.h"

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

#include "vector_modes.h"

}  // namespace

constinit const LevelRoutines kAvx512Routines = kRoutines;

}  // namespace qde
