// Parses the settings file with toml++.
#include "host/vetrix/settings/settings_toml.h"

#include <toml++/toml.h>
#include <utf8.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vetrix {
namespace {

// The parser's classification of characters from U+0080 to U+FFFF has gaps:
// outside of a string, such a character can lead to undefined behaviour. Beyond
// U+FFFF the classification is complete. Therefore these characters are shifted
// into the private range from U+F0000 to U+FFFFF while the parser works.
constexpr char32_t kShift = 0xF0000;
constexpr char32_t kByteOrderMark = 0xFEFF;

bool NeedsShift(char32_t c) {
  return c >= 0x80 && c <= 0xFFFF;
}

bool IsShifted(char32_t c) {
  return c >= kShift && c <= kShift + 0xFFFF;
}

std::u32string Decode(const std::string& bytes) {
  std::u32string text;
  utf8::utf8to32(bytes.begin(), bytes.end(), std::back_inserter(text));
  return text;
}

std::string Encode(const std::u32string& text) {
  std::string bytes;
  utf8::utf32to8(text.begin(), text.end(), std::back_inserter(bytes));
  return bytes;
}

// Leaves a byte-order mark at the start as it is. None when the text is not
// UTF-8 or contains shifted characters already.
std::optional<std::string> Shifted(const std::string& text) {
  if (!utf8::is_valid(text.begin(), text.end())) return std::nullopt;
  std::u32string characters = Decode(text);
  if (std::ranges::any_of(characters, IsShifted)) return std::nullopt;
  const std::size_t start = characters.starts_with(kByteOrderMark) ? 1 : 0;
  for (std::size_t i = start; i < characters.size(); ++i) {
    if (NeedsShift(characters[i])) characters[i] += kShift;
  }
  return Encode(characters);
}

std::string Unshifted(std::string_view text) {
  std::u32string characters = Decode(std::string(text));
  for (char32_t& c : characters) {
    if (IsShifted(c)) c -= kShift;
  }
  return Encode(characters);
}

std::optional<std::string> TextOf(const toml::node& value) {
  if (const auto* boolean = value.as_boolean()) return boolean->get() ? "true" : "false";
  if (const auto* integer = value.as_integer()) return std::to_string(integer->get());
  if (const auto* string = value.as_string()) return Unshifted(string->get());
  return std::nullopt;
}

std::string Complaint(const std::string& name, const toml::source_region& where,
                      const std::string& what) {
  return "settings " + name + ", line " + std::to_string(where.begin.line) + ": " + what;
}

ParsedSettings TextsOf(const toml::table& table, const std::string& name) {
  SettingTexts texts;
  std::vector<std::string> complaints;
  for (const auto& [shiftedKey, value] : table) {
    std::string key = Unshifted(shiftedKey.str());
    if (auto text = TextOf(value)) {
      texts.emplace(std::move(key), *std::move(text));
    } else {
      complaints.push_back(
          Complaint(name, value.source(), key + " is not a boolean, an integer or a string"));
    }
  }
  return {std::move(texts), std::move(complaints)};
}

}  // namespace

// The parser is built with exceptions and does not receive the name: otherwise it
// would end the program when memory runs out.
ParsedSettings ParseSettings(const std::string& toml, const std::string& name) {
  const std::optional<std::string> shifted = Shifted(toml);
  if (!shifted) {
    return {std::nullopt,
            {"settings " + name + ": the text is not UTF-8 or contains private characters"}};
  }
  try {
    return TextsOf(toml::parse(*shifted), name);
  } catch (const toml::parse_error& error) {
    return {std::nullopt, {Complaint(name, error.source(), Unshifted(error.description()))}};
  }
}

}  // namespace vetrix
