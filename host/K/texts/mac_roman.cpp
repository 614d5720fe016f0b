// Converts K's 8-bit texts.
#include "host/K/texts/mac_roman.h"

#include <algorithm>
#include <array>
#include <optional>

#include "K_host.h"
#include "platform/vetrix.h"

namespace k {
namespace {

// The characters from 0x80; those below are ASCII. 0xDB is the euro sign, as in
// newer versions of the set; 0xF0 has a private code point.
constexpr std::array<char16_t, 128> kUpperHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1,  // 0x80
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,  // 0x88
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,  // 0x90
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,  // 0x98
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF,  // 0xA0
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,  // 0xA8
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211,  // 0xB0
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,  // 0xB8
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,  // 0xC0
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,  // 0xC8
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA,  // 0xD0
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,  // 0xD8
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,  // 0xE0
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,  // 0xE8
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,  // 0xF0
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,  // 0xF8
};

constexpr char16_t kFirstAboveASCII = 0x80;

bool IsASCII(char c) {
  return static_cast<unsigned char>(c) < kFirstAboveASCII;
}

char16_t CharacterOf(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return IsASCII(c) ? char16_t{byte} : kUpperHalf[byte - kFirstAboveASCII];
}

std::optional<char> ByteOf(char16_t character) {
  if (character < kFirstAboveASCII) return static_cast<char>(character);
  const auto* found = std::ranges::find(kUpperHalf, character);
  if (found == kUpperHalf.end()) return std::nullopt;
  return static_cast<char>(kFirstAboveASCII + (found - kUpperHalf.begin()));
}

bool IsLacking(char16_t character) {
  return !ByteOf(character);
}

// Removes the characters before the first one for which `ends` is true from the
// text and returns them.
template <typename Text, typename Ends>
Text TakeUntil(Text& text, Ends ends) {
  const auto length = static_cast<std::size_t>(std::ranges::find_if(text, ends) - text.begin());
  const Text taken = text.substr(0, length);
  text.remove_prefix(length);
  return taken;
}

}  // namespace

std::u16string MacRomanToUTF16(std::string_view text) {
  std::u16string result;
  while (!text.empty()) {
    const char first = text.front();
    text.remove_prefix(1);
    if (first == K_ShiftOut && !text.empty() && !IsASCII(text.front())) {
      result += vetrix::utility::UTF8to16(std::string(TakeUntil(text, IsASCII)));
      if (text.starts_with(char{K_ShiftIn})) text.remove_prefix(1);
    } else {
      result += CharacterOf(first);
    }
  }
  return result;
}

std::string MacRomanToUTF8(std::string_view text) {
  return vetrix::utility::UTF16to8(MacRomanToUTF16(text));
}

std::string UTF16ToMacRoman(std::u16string_view text) {
  std::string result;
  while (!text.empty()) {
    for (const char16_t c : TakeUntil(text, IsLacking)) result += ByteOf(c).value();
    const std::u16string_view lacking = TakeUntil(text, [](char16_t c) { return !IsLacking(c); });
    if (lacking.empty()) continue;
    result += char{K_ShiftOut};
    result += vetrix::utility::UTF16to8(std::u16string(lacking));
    result += char{K_ShiftIn};
  }
  return result;
}

}  // namespace k
