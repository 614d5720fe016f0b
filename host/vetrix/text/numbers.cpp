// Converts numbers to text, with std::to_chars: it ignores locales and rounds the
// exact value.
#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

#include "platform/vetrix.h"

namespace {

// Further digits would be zeros or those of the exact binary value.
constexpr int kMostDigits = 100;
constexpr std::size_t kBufferSize = std::numeric_limits<double>::max_exponent10 + kMostDigits + 8;

std::u16string Widen(const char* begin, const char* end) {
  return {begin, end};
}

// Drops zeros at the end of a fraction while it has more than `minDigits` digits.
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

// There is only one style and no flag, so both arguments are ignored.
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
