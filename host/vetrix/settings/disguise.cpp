#include "host/vetrix/settings/disguise.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace vetrix {
namespace {

constexpr char32_t kDistance = 0xF0000;
constexpr char32_t kByteOrderMark = 0xFEFF;

bool IsDoubtful(char32_t c) {
  return c >= 0x80 && c <= 0xFFFF;
}
bool IsDisguise(char32_t c) {
  return c >= kDistance && c <= kDistance + 0xFFFF;
}

std::string Encoded(const std::u32string& text) {
  std::string bytes;
  utf8::utf32to8(text.begin(), text.end(), std::back_inserter(bytes));
  return bytes;
}

std::u32string Decoded(const std::string& bytes) {
  std::u32string text;
  utf8::utf8to32(bytes.begin(), bytes.end(), std::back_inserter(text));
  return text;
}

}  // namespace

std::optional<std::string> Disguised(const std::string& text) {
  if (!utf8::is_valid(text.begin(), text.end())) return std::nullopt;
  std::u32string characters = Decoded(text);
  if (std::ranges::any_of(characters, IsDisguise)) return std::nullopt;
  const std::size_t start = characters.starts_with(kByteOrderMark) ? 1 : 0;
  for (std::size_t i = start; i < characters.size(); ++i) {
    if (IsDoubtful(characters[i])) characters[i] += kDistance;
  }
  return Encoded(characters);
}

std::string Undisguised(const std::string& text) {
  std::u32string characters = Decoded(text);
  for (char32_t& c : characters) {
    if (IsDisguise(c)) c -= kDistance;
  }
  return Encoded(characters);
}

}  // namespace vetrix
