// Converts between UTF-8 and UTF-16. The routines of utf8.h throw on ill-formed
// text, so it is made well-formed first.
#include <utf8.h>

#include <iterator>

#include "platform/vetrix.h"

namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

std::u16string ReplaceLoneSurrogates(std::u16string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair =
        IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
    if (pair) {
      ++i;
    } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
      text[i] = kReplacement;
    }
  }
  return text;
}

std::string ReplaceIllFormed(const std::string& text) {
  std::string result;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(result), kReplacement);
  return result;
}

}  // namespace

namespace vetrix::utility {

std::string UTF16to8(std::u16string const& text) {
  const std::u16string wellFormed = ReplaceLoneSurrogates(text);
  std::string result;
  utf8::utf16to8(wellFormed.begin(), wellFormed.end(), std::back_inserter(result));
  return result;
}

std::u16string UTF8to16(std::string const& text) {
  const std::string wellFormed = ReplaceIllFormed(text);
  std::u16string result;
  utf8::utf8to16(wellFormed.begin(), wellFormed.end(), std::back_inserter(result));
  return result;
}

}  // namespace vetrix::utility
