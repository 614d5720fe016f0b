// Numbers as text. Built on to_chars, which knows no locale and rounds the
// exact value.
#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/vetrix.h"

namespace {

// More digits would only show zeros, or the noise of the binary value.
constexpr int kMostDigits = 100;
constexpr std::size_t kBufferSize = std::numeric_limits<double>::max_exponent10 + kMostDigits + 8;

std::u16string Widen(const char* begin, const char* end) {
  return {begin, end};
}

// Takes zeros from the end of a fraction until `minDigits` digits are left.
const char* DropZeros(const char* begin, const char* end, int minDigits) {
  const char* point = std::find(begin, end, '.');
  if (point == end) return end;
  while (end - point - 1 > minDigits && end[-1] == '0') --end;
  return end - point == 1 ? point : end;
}

}  // namespace

namespace vetrix::utility {

std::u16string NumberToString(std::int32_t value) {
  std::array<char, 16> buffer{};
  const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return Widen(buffer.data(), end);
}

// There is one style and no flag; both are taken so that callers need not
// change when there are more.
std::u16string NumberToString(double value, int minDigits, int maxDigits, NumberFlags, int) {
  const int least = std::clamp(minDigits, 0, kMostDigits);
  const int most = std::clamp(maxDigits, least, kMostDigits);
  std::array<char, kBufferSize> buffer{};
  const char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                        std::chars_format::fixed, most)
                              .ptr;
  return Widen(buffer.data(), DropZeros(buffer.data(), end, least));
}

}  // namespace vetrix::utility
