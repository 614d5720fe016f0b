// Replaces @0 to @9 in texts.
#include <array>

#include "platform/vetrix.h"

namespace {

using Replacements = std::array<const std::u16string*, 10>;

// Appends the replacement of '@' followed by `next`. Returns false when that is not
// a placeholder.
bool AppendPlaceholder(std::u16string& result, char16_t next, const Replacements& replacements) {
  if (next == u'@') {
    result += u'@';
    return true;
  }
  if (next < u'0' || next > u'9') return false;
  result += *replacements[static_cast<std::size_t>(next - u'0')];
  return true;
}

// One pass from left to right: placeholders within replacements stay.
std::u16string Substitute(const std::u16string& text, const Replacements& replacements) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool placeholder = text[i] == u'@' && i + 1 < text.size() &&
                             AppendPlaceholder(result, text[i + 1], replacements);
    if (placeholder) {
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

}  // namespace

namespace vetrix::utility {

std::u16string ReplaceInString(std::u16string const& text, std::u16string const& r0,
                               std::u16string const& r1, std::u16string const& r2,
                               std::u16string const& r3, std::u16string const& r4,
                               std::u16string const& r5, std::u16string const& r6,
                               std::u16string const& r7, std::u16string const& r8,
                               std::u16string const& r9) {
  return Substitute(text, {&r0, &r1, &r2, &r3, &r4, &r5, &r6, &r7, &r8, &r9});
}

}  // namespace vetrix::utility
