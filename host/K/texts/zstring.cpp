// ZStrings: their keys, default texts and markup.
#include "host/K/texts/zstring.h"

#include <algorithm>
#include <array>
#include <optional>

#include "host/K/texts/mac_roman.h"
#include "host/K/texts/translations.h"
#include "platform/K.h"

namespace k {
namespace {

constexpr std::string_view kOpen = "#{";

struct Character {
  std::string_view name;
  unsigned char macRoman;
};

constexpr std::array<Character, 20> kCharacters = {{
    {"bull", 0xA5},   {"cent", 0xA2},   {"copy", 0xA9},  {"deg", 0xA1},   {"divide", 0xD6},
    {"hellip", 0xC9}, {"laquo", 0xC7},  {"ldquo", 0xD2}, {"lsquo", 0xD4}, {"mdash", 0xD1},
    {"micro", 0xB5},  {"middot", 0xE1}, {"nbsp", 0xCA},  {"ndash", 0xD0}, {"para", 0xA6},
    {"plusmn", 0xB1}, {"raquo", 0xC8},  {"rdquo", 0xD3}, {"rsquo", 0xD5}, {"sect", 0xA4},
}};

// The markup at the start of `text`: its character and its length.
struct Markup {
  char character;
  std::size_t length;
};

std::optional<Markup> MarkupAt(std::string_view text) {
  if (!text.starts_with(kOpen)) return std::nullopt;
  const std::size_t close = text.find('}');
  if (close == std::string_view::npos) return std::nullopt;
  const std::string_view name = text.substr(kOpen.size(), close - kOpen.size());
  const auto* found = std::ranges::find(kCharacters, name, &Character::name);
  if (found == kCharacters.end()) return std::nullopt;
  return Markup{static_cast<char>(found->macRoman), close + 1};
}

}  // namespace

std::string_view KeyOf(std::string_view zstring) {
  return zstring.starts_with(kKeyPrefix) ? zstring.substr(0, zstring.find('=')) : "";
}

std::string_view TextAfterKey(std::string_view zstring) {
  const std::size_t equals = zstring.find('=');
  return zstring.substr(equals == std::string_view::npos ? zstring.size() : equals + 1);
}

std::string_view DefaultText(std::string_view zstring) {
  return zstring.starts_with(kKeyPrefix) ? TextAfterKey(zstring) : zstring;
}

bool HasMarkup(std::string_view text) {
  return text.find(kOpen) != std::string_view::npos;
}

std::string ExpandMarkup(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const Markup next = MarkupAt(text).value_or(Markup{text.front(), 1});
    result += next.character;
    text.remove_prefix(next.length);
  }
  return result;
}

}  // namespace k

std::u16string K_ZStringToUTF16String(const char* zstring) {
  if (zstring == nullptr) return {};
  const std::optional<std::string> translation = k::Translations::Instance().Find(zstring);
  return k::MacRomanToUTF16(translation ? *translation : k::ExpandMarkup(k::DefaultText(zstring)));
}
