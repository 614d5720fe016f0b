// The vectors of AVX-512. Only for sources that are compiled for that level: each derives a
// type from this one in its unnamed namespace and passes that to the templates, so that the
// linker cannot use what is compiled here at other levels. The headers of the levels have the
// same members.
#ifndef SIMD_VECTOR_AVX512_H
#define SIMD_VECTOR_AVX512_H

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace simd {

struct VectorAvx512 {
  using Type = __m512i;
  using Floats = __m512;
  static constexpr std::size_t kBytes = sizeof(Type);
  // For forms with a mask: GCC 12 warns of uninitialised values in some without.
  static constexpr __mmask16 kAll = 0xFFFF;

  static Type Load(const void* from) { return _mm512_loadu_si512(static_cast<const Type*>(from)); }
  static void Store(void* to, Type vector) { _mm512_storeu_si512(static_cast<Type*>(to), vector); }
  // To a multiple of kBytes, past the caches.
  static void Stream(void* to, Type vector) { _mm512_stream_si512(static_cast<Type*>(to), vector); }

  // The same number in each place.
  static Type Spread16(std::uint16_t number) {
    return _mm512_set1_epi16(static_cast<short>(number));
  }
  static Type Spread32(std::uint32_t number) { return _mm512_set1_epi32(static_cast<int>(number)); }
  static Type Spread64(std::uint64_t number) {
    return _mm512_set1_epi64(static_cast<long long>(number));
  }

  // Bit by bit.
  static Type And(Type a, Type b) { return _mm512_and_si512(a, b); }
  static Type Or(Type a, Type b) { return _mm512_or_si512(a, b); }
  static Type Xor(Type a, Type b) { return _mm512_xor_si512(a, b); }
  static Type Not(Type a) { return _mm512_ternarylogic_epi32(a, a, a, 0x55); }
  static Type Select(Type mask, Type ones, Type zeros) {
    return _mm512_ternarylogic_epi32(mask, ones, zeros, 0xCA);
  }

  // Unsigned numbers of 8 and 16 bits.
  static Type Add8(Type a, Type b) { return _mm512_add_epi8(a, b); }
  static Type Sub8(Type a, Type b) { return _mm512_sub_epi8(a, b); }
  static Type AddSaturated8(Type a, Type b) { return _mm512_adds_epu8(a, b); }
  static Type SubSaturated8(Type a, Type b) { return _mm512_subs_epu8(a, b); }
  static Type Min8(Type a, Type b) { return _mm512_min_epu8(a, b); }
  static Type Max8(Type a, Type b) { return _mm512_max_epu8(a, b); }
  static Type Add16(Type a, Type b) { return _mm512_add_epi16(a, b); }
  static Type Sub16(Type a, Type b) { return _mm512_sub_epi16(a, b); }
  static Type AddSaturated16(Type a, Type b) { return _mm512_adds_epu16(a, b); }
  static Type Multiply16(Type a, Type b) { return _mm512_mullo_epi16(a, b); }
  static Type MultiplyHigh16(Type a, Type b) { return _mm512_mulhi_epu16(a, b); }
  // Half of the sum, rounded upwards.
  static Type Average16(Type a, Type b) { return _mm512_avg_epu16(a, b); }
  template <int kBits>
  static Type ShiftLeft16(Type a) {
    return _mm512_slli_epi16(a, kBits);
  }

  // Signed numbers.
  static Type MultiplyHighSigned16(Type a, Type b) { return _mm512_mulhi_epi16(a, b); }
  // a * b / 32768, rounded to the nearest.
  static Type MultiplyRounded16(Type a, Type b) { return _mm512_mulhrs_epi16(a, b); }
  template <int kBits>
  static Type ShiftRightSigned16(Type a) {
    return _mm512_srai_epi16(a, kBits);
  }
  // Sums of two neighbouring products: of unsigned and signed bytes, of numbers of 16 bits.
  static Type MultiplyPairs8(Type bytes, Type factors) {
    return _mm512_maddubs_epi16(bytes, factors);
  }
  static Type MultiplyPairs16(Type a, Type b) { return _mm512_madd_epi16(a, b); }

  // All ones where the two are equal, else 0.
  static Type Equal8(Type a, Type b) { return _mm512_movm_epi8(_mm512_cmpeq_epi8_mask(a, b)); }
  static Type Equal16(Type a, Type b) { return _mm512_movm_epi16(_mm512_cmpeq_epi16_mask(a, b)); }
  static Type Equal32(Type a, Type b) { return _mm512_movm_epi32(_mm512_cmpeq_epi32_mask(a, b)); }

  // The bytes of each 32 bits in the opposite order.
  static Type ReverseBytes32(Type words) {
    const __m128i order = _mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12);
    return _mm512_shuffle_epi8(words, _mm512_broadcast_i32x4(order));
  }

  // Bytes of `a` and `b` in turn. The vectors of the low bytes and of the high ones are in an
  // order that PackSigned and PackUnsigned undo.
  static Type LowPairs8(Type a, Type b) { return _mm512_unpacklo_epi8(a, b); }
  static Type HighPairs8(Type a, Type b) { return _mm512_unpackhi_epi8(a, b); }
  // Numbers of 16 bits, signed, as bytes of the nearest value.
  static Type PackSigned(Type low, Type high) { return _mm512_packs_epi16(low, high); }
  static Type PackUnsigned(Type low, Type high) { return _mm512_packus_epi16(low, high); }
  // For numbers in their order in memory: of 16 bits, and of 32.
  static Type PackUnsignedInOrder(Type low, Type high) {
    const Type order = _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7);
    return _mm512_maskz_permutexvar_epi64(0xFF, order, PackUnsigned(low, high));
  }
  static Type PackUnsignedInOrder(Type a, Type b, Type c, Type d) {
    const Type bytes = _mm512_packus_epi16(_mm512_packs_epi32(a, b), _mm512_packs_epi32(c, d));
    const Type order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    return _mm512_maskz_permutexvar_epi32(kAll, order, bytes);
  }

  // Bytes as numbers of 16 or 32 bits: as many as a vector holds.
  static Type LoadBytesAs16(const void* bytes) {
    return _mm512_cvtepu8_epi16(_mm256_loadu_si256(static_cast<const __m256i*>(bytes)));
  }
  static Type LoadBytesAs32(const void* bytes) {
    const __m128i packed = _mm_loadu_si128(static_cast<const __m128i*>(bytes));
    return _mm512_maskz_cvtepu8_epi32(kAll, packed);
  }

  // Numbers of 32 bits: every second one of two vectors in a row, and each one of half a
  // vector twice.
  static Type Even32(Type a, Type b) {
    const Type even = _mm512_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30);
    return _mm512_permutex2var_epi32(a, even, b);
  }
  static Type Odd32(Type a, Type b) {
    const Type odd = _mm512_setr_epi32(1, 3, 5, 7, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29, 31);
    return _mm512_permutex2var_epi32(a, odd, b);
  }
  static Type FirstTwice32(Type a) {
    const Type first = _mm512_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7);
    return _mm512_maskz_permutexvar_epi32(kAll, first, a);
  }
  static Type LastTwice32(Type a) {
    const Type last = _mm512_setr_epi32(8, 8, 9, 9, 10, 10, 11, 11, 12, 12, 13, 13, 14, 14, 15, 15);
    return _mm512_maskz_permutexvar_epi32(kAll, last, a);
  }

  // The number of 32 bits at each position of a table.
  static Type LoadEach32(const void* table, Type positions) {
    return _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), kAll, positions,
                                       static_cast<const int*>(table), 4);
  }
  // The byte at each position, as a number of 32 bits. Three more bytes are read.
  static Type LoadEach8(const void* table, Type positions) {
    const Type words = _mm512_mask_i32gather_epi32(_mm512_setzero_si512(), kAll, positions,
                                                   static_cast<const int*>(table), 1);
    return And(words, Spread32(0xFF));
  }

  static Floats LoadFloats(const float* from) { return _mm512_loadu_ps(from); }
  static Floats SpreadFloat(float number) { return _mm512_set1_ps(number); }
  static Floats MultiplyFloats(Floats a, Floats b) { return _mm512_mul_ps(a, b); }
  // `b` where one of the two is NaN.
  static Floats MinFloats(Floats a, Floats b) { return _mm512_min_ps(a, b); }
  // Truncated to 32 bits; the lowest number for NaN and for what does not fit.
  static Type Truncate(Floats a) { return _mm512_cvttps_epi32(a); }
  static Floats ToFloats(Type words) { return _mm512_cvtepi32_ps(words); }
  // a * b + c, rounded once.
  static Floats MultiplyAddFloats(Floats a, Floats b, Floats c) { return _mm512_fmadd_ps(a, b, c); }
  static Type BitsOf(Floats a) { return _mm512_castps_si512(a); }
};

}  // namespace simd

#endif
