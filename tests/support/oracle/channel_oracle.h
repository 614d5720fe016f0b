// The expected value of a converted channel, computed without the module's
// formulas: exactly, on integers, from the bits of a float or by search.
#ifndef TESTS_SUPPORT_ORACLE_CHANNEL_ORACLE_H
#define TESTS_SUPPORT_ORACLE_CHANNEL_ORACLE_H

#include <bit>
#include <cstdint>

namespace oracle {

// A number as mantissa * 2^exponent.
struct Number {
  std::uint64_t mantissa;
  int exponent;
};

constexpr std::uint32_t kMagnitude = 0x7FFFFFFF;
constexpr std::uint32_t kInfinite = 0x7F800000;
constexpr std::uint32_t kOne = 0x3F800000;

constexpr bool IsNaN(std::uint32_t bits) {
  return (bits & kMagnitude) > kInfinite;
}

constexpr bool IsNegative(std::uint32_t bits) {
  return bits > kMagnitude;
}

// The value of a finite float that is not negative.
constexpr Number Decoded(std::uint32_t bits) {
  const std::uint32_t fraction = bits & 0x7FFFFF;
  const int exponent = static_cast<int>(bits >> 23);
  if (exponent == 0) return {fraction, -149};
  return {fraction | 0x800000U, exponent - 150};
}

// Shifts to the right and rounds to nearest, halves to even.
constexpr std::uint64_t ShiftedToEven(std::uint64_t value, int places) {
  if (places <= 0) return value;
  if (places > 63) return 0;
  const std::uint64_t half = std::uint64_t{1} << (places - 1);
  const std::uint64_t rest = value & ((half << 1) - 1);
  const std::uint64_t whole = value >> places;
  return whole + (rest > half || (rest == half && (whole & 1) != 0) ? 1 : 0);
}

// Rounded to a mantissa of so many bits, halves to even.
constexpr Number RoundedTo(int bits, Number number) {
  const int excess = static_cast<int>(std::bit_width(number.mantissa)) - bits;
  if (excess <= 0) return number;
  return {ShiftedToEven(number.mantissa, excess), number.exponent + excess};
}

constexpr std::uint32_t Truncated(Number number) {
  if (number.exponent >= 0) return static_cast<std::uint32_t>(number.mantissa << number.exponent);
  if (number.exponent < -63) return 0;
  return static_cast<std::uint32_t>(number.mantissa >> -number.exponent);
}

// To nearest, halves upward.
constexpr std::uint32_t Rounded(Number number) {
  if (number.exponent >= 0 || number.exponent < -63) return Truncated(number);
  const std::uint64_t half = std::uint64_t{1} << (-number.exponent - 1);
  return Truncated({number.mantissa + half, number.exponent});
}

// The bits of the float nearest to a normal number.
constexpr std::uint32_t FloatBits(Number number) {
  if (number.mantissa == 0) return 0;
  Number rounded = RoundedTo(24, number);
  while (rounded.mantissa >= 0x1000000) rounded = {rounded.mantissa >> 1, rounded.exponent + 1};
  while (rounded.mantissa < 0x800000) rounded = {rounded.mantissa << 1, rounded.exponent - 1};
  return static_cast<std::uint32_t>(rounded.exponent + 150) << 23 |
         static_cast<std::uint32_t>(rounded.mantissa & 0x7FFFFF);
}

// Clamped to 0..1; NaN and -0.0 pass.
constexpr std::uint32_t Clipped(std::uint32_t bits) {
  if (IsNaN(bits) || bits == 0x80000000) return bits;
  if (IsNegative(bits)) return 0;
  return bits > kOne ? kOne : bits;
}

// A channel between 0 and 1 times full scale, the product a float.
constexpr Number Product(std::uint32_t bits, std::uint32_t fullScale) {
  const Number channel = Decoded(bits);
  return RoundedTo(24, {channel.mantissa * fullScale, channel.exponent});
}

constexpr std::uint32_t RoundedTimes(std::uint32_t bits, std::uint32_t fullScale) {
  const std::uint32_t clipped = Clipped(bits);
  return IsNaN(clipped) || IsNegative(clipped) ? 0 : Rounded(Product(clipped, fullScale));
}

constexpr std::uint32_t Fto16(std::uint32_t bits) {
  return RoundedTimes(bits, 32768);
}

constexpr std::uint32_t Fto8(std::uint32_t bits) {
  return RoundedTimes(bits, 255);
}

// The rule of a blit's rows: the same product, truncated.
constexpr std::uint32_t RowFto8(std::uint32_t bits) {
  const std::uint32_t clipped = Clipped(bits);
  return IsNaN(clipped) || IsNegative(clipped) ? 0 : Truncated(Product(clipped, 255));
}

// The bits of 8-bit c divided by 255: the product of c and the double nearest
// to 1/255, which is 0x10101010101010 * 2^-60, once rounded to double and once
// to float.
constexpr std::uint32_t ChannelFrom8(std::uint32_t c) {
  return FloatBits(RoundedTo(53, {c * std::uint64_t{0x10101010101010}, -60}));
}

constexpr std::uint32_t ChannelFrom16(std::uint32_t v) {
  return FloatBits({v, -15});
}

// The largest n for which n * divisor does not exceed the number: a division
// by search.
constexpr std::uint32_t Quotient(std::uint32_t number, std::uint32_t divisor) {
  std::uint32_t n = 0;
  for (std::uint32_t step = 0x10000; step != 0; step /= 2) {
    if (std::uint64_t{n + step} * divisor <= number) n += step;
  }
  return n;
}

constexpr std::uint32_t From8To16(std::uint32_t c) {
  return Quotient(c * 32768 + 128, 255);
}

// Wraps where the quotient exceeds a byte.
constexpr std::uint32_t From16To8(std::uint32_t v) {
  std::uint32_t n = Quotient(v * 255 + 16384, 32768);
  while (n > 255) n -= 256;
  return n;
}

}  // namespace oracle

#endif
