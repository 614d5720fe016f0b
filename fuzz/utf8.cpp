// Checks of UTF-8.
#include "fuzz/utf8.h"

#include <cstddef>
#include <cstdint>

namespace {

// Bytes of the character that starts with this one; 0 when none does.
std::size_t LengthFrom(unsigned char first) {
  if (first < 0x80) return 1;
  if (first < 0xC0) return 0;
  if (first < 0xE0) return 2;
  if (first < 0xF0) return 3;
  return first < 0xF8 ? 4 : 0;
}

bool IsCharacter(std::string_view bytes) {
  constexpr std::uint32_t kFirstOfLength[] = {0, 0, 0x80, 0x800, 0x10000};
  const auto first = static_cast<unsigned char>(bytes[0]);
  std::uint32_t character = bytes.size() == 1 ? first : first & (0x7FU >> bytes.size());
  for (const char byte : bytes.substr(1)) {
    const auto next = static_cast<unsigned char>(byte);
    if ((next & 0xC0U) != 0x80U) return false;
    character = character << 6 | (next & 0x3FU);
  }
  const bool surrogate = character >= 0xD800 && character < 0xE000;
  return character >= kFirstOfLength[bytes.size()] && character <= 0x10FFFF && !surrogate;
}

}  // namespace

bool fuzz::IsUTF8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = LengthFrom(static_cast<unsigned char>(text[0]));
    if (length == 0 || length > text.size() || !IsCharacter(text.substr(0, length))) return false;
    text.remove_prefix(length);
  }
  return true;
}
