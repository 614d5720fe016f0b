// Breaks text into lines by the widths of a font.
#include "tools/pxl/sheets/label_wrap.h"

#include <algorithm>

namespace pxl {
namespace {

// A letter starts with any byte but a continuation byte of UTF-8.
bool StartsLetter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

// The length of the next line: up to the last word that fits, otherwise a part of the
// first word.
std::size_t LineLength(const Font& font, std::string_view text, int width) {
  if (font.Width(text) <= width) return text.size();
  std::size_t words = 0;
  std::size_t letters = 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (!StartsLetter(text[i])) continue;
    if (letters != 0 && font.Width(text.substr(0, i)) > width) break;
    letters = i;
    if (text[i] == ' ') words = i;
  }
  return words != 0 ? words : letters != 0 ? letters : text.size();
}

std::string_view WithoutOuterBlanks(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace

std::vector<std::string> Wrapped(const Font& font, std::string_view text, int width) {
  std::vector<std::string> lines;
  for (text = WithoutOuterBlanks(text); !text.empty(); text = WithoutOuterBlanks(text)) {
    const std::size_t length = LineLength(font, text, width);
    lines.emplace_back(WithoutOuterBlanks(text.substr(0, length)));
    text.remove_prefix(length);
  }
  return lines;
}

}  // namespace pxl
