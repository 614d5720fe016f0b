// The vectors of SSE4.1. Only for sources that are compiled for that level: each derives a
// type from this one in its unnamed namespace and passes that to the templates, so that the
// linker cannot use what is compiled here at other levels. The headers of the levels have the
// same members, apart from those for AVX2 and above.
#ifndef SIMD_VECTOR_SSE41_H
#define SIMD_VECTOR_SSE41_H

#include <smmintrin.h>

#include <cstddef>
#include <cstdint>

namespace simd {

struct VectorSse41 {
  using Type = __m128i;
  using Floats = __m128;
  static constexpr std::size_t kBytes = sizeof(Type);

  static Type Load(const void* from) { return _mm_loadu_si128(static_cast<const Type*>(from)); }
  static void Store(void* to, Type vector) { _mm_storeu_si128(static_cast<Type*>(to), vector); }
  // To a multiple of kBytes, past the caches.
  static void Stream(void* to, Type vector) { _mm_stream_si128(static_cast<Type*>(to), vector); }

  // The same number in each place.
  static Type Spread16(std::uint16_t number) { return _mm_set1_epi16(static_cast<short>(number)); }
  static Type Spread32(std::uint32_t number) { return _mm_set1_epi32(static_cast<int>(number)); }
  static Type Spread64(std::uint64_t number) {
    return _mm_set1_epi64x(static_cast<long long>(number));
  }

  // Bit by bit.
  static Type And(Type a, Type b) { return _mm_and_si128(a, b); }
  static Type Or(Type a, Type b) { return _mm_or_si128(a, b); }
  static Type Xor(Type a, Type b) { return _mm_xor_si128(a, b); }
  static Type Not(Type a) { return _mm_xor_si128(a, _mm_set1_epi32(-1)); }
  static Type Select(Type mask, Type ones, Type zeros) {
    return _mm_or_si128(_mm_and_si128(mask, ones), _mm_andnot_si128(mask, zeros));
  }

  // Unsigned numbers of 8 and 16 bits.
  static Type Add8(Type a, Type b) { return _mm_add_epi8(a, b); }
  static Type Sub8(Type a, Type b) { return _mm_sub_epi8(a, b); }
  static Type AddSaturated8(Type a, Type b) { return _mm_adds_epu8(a, b); }
  static Type SubSaturated8(Type a, Type b) { return _mm_subs_epu8(a, b); }
  static Type Min8(Type a, Type b) { return _mm_min_epu8(a, b); }
  static Type Max8(Type a, Type b) { return _mm_max_epu8(a, b); }
  static Type Add16(Type a, Type b) { return _mm_add_epi16(a, b); }
  static Type Sub16(Type a, Type b) { return _mm_sub_epi16(a, b); }
  static Type AddSaturated16(Type a, Type b) { return _mm_adds_epu16(a, b); }
  static Type Multiply16(Type a, Type b) { return _mm_mullo_epi16(a, b); }
  static Type MultiplyHigh16(Type a, Type b) { return _mm_mulhi_epu16(a, b); }
  // Half of the sum, rounded upwards.
  static Type Average16(Type a, Type b) { return _mm_avg_epu16(a, b); }
  template <int kBits>
  static Type ShiftLeft16(Type a) {
    return _mm_slli_epi16(a, kBits);
  }

  // Signed numbers.
  static Type MultiplyHighSigned16(Type a, Type b) { return _mm_mulhi_epi16(a, b); }
  // a * b / 32768, rounded to the nearest.
  static Type MultiplyRounded16(Type a, Type b) { return _mm_mulhrs_epi16(a, b); }
  template <int kBits>
  static Type ShiftRightSigned16(Type a) {
    return _mm_srai_epi16(a, kBits);
  }
  // Sums of two neighbouring products: of unsigned and signed bytes, of numbers of 16 bits.
  static Type MultiplyPairs8(Type bytes, Type factors) { return _mm_maddubs_epi16(bytes, factors); }
  static Type MultiplyPairs16(Type a, Type b) { return _mm_madd_epi16(a, b); }

  // All ones where the two are equal, else 0.
  static Type Equal8(Type a, Type b) { return _mm_cmpeq_epi8(a, b); }
  static Type Equal16(Type a, Type b) { return _mm_cmpeq_epi16(a, b); }
  static Type Equal32(Type a, Type b) { return _mm_cmpeq_epi32(a, b); }

  // The bytes of each 32 bits in the opposite order.
  static Type ReverseBytes32(Type words) {
    const Type order = _mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12);
    return _mm_shuffle_epi8(words, order);
  }

  // Bytes of `a` and `b` in turn. The vectors of the low bytes and of the high ones are in an
  // order that PackSigned and PackUnsigned undo.
  static Type LowPairs8(Type a, Type b) { return _mm_unpacklo_epi8(a, b); }
  static Type HighPairs8(Type a, Type b) { return _mm_unpackhi_epi8(a, b); }
  // Numbers of 16 bits, signed, as bytes of the nearest value.
  static Type PackSigned(Type low, Type high) { return _mm_packs_epi16(low, high); }
  static Type PackUnsigned(Type low, Type high) { return _mm_packus_epi16(low, high); }
  // For numbers in their order in memory.
  static Type PackUnsignedInOrder(Type low, Type high) { return PackUnsigned(low, high); }
  static Type PackUnsignedInOrder(Type a, Type b, Type c, Type d) {
    return _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
  }

  // Bytes as numbers of 16 or 32 bits: as many as a vector holds.
  static Type LoadBytesAs16(const void* bytes) {
    return _mm_cvtepu8_epi16(_mm_loadl_epi64(static_cast<const __m128i*>(bytes)));
  }
  static Type LoadBytesAs32(const void* bytes) { return _mm_cvtepu8_epi32(_mm_loadu_si32(bytes)); }

  // Numbers of 32 bits: every second one of two vectors in a row, and each one of half a
  // vector twice.
  static Type Even32(Type a, Type b) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), 0x88));
  }
  static Type Odd32(Type a, Type b) {
    return _mm_castps_si128(_mm_shuffle_ps(_mm_castsi128_ps(a), _mm_castsi128_ps(b), 0xDD));
  }
  static Type FirstTwice32(Type a) { return _mm_unpacklo_epi32(a, a); }
  static Type LastTwice32(Type a) { return _mm_unpackhi_epi32(a, a); }

  static Floats LoadFloats(const float* from) { return _mm_loadu_ps(from); }
  static Floats SpreadFloat(float number) { return _mm_set1_ps(number); }
  static Floats MultiplyFloats(Floats a, Floats b) { return _mm_mul_ps(a, b); }
  // `b` where one of the two is NaN.
  static Floats MinFloats(Floats a, Floats b) { return _mm_min_ps(a, b); }
  // Truncated to 32 bits; the lowest number for NaN and for what does not fit.
  static Type Truncate(Floats a) { return _mm_cvttps_epi32(a); }
};

}  // namespace simd

#endif
