#include "toml_characters.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace vetrix {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r\n";

// Goes through a text from string to string.
class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {
    if (text_.starts_with(kByteOrderMark)) place_ = kByteOrderMark.size();
  }

  // Where the stray character is; the end when there is none.
  std::size_t Find() {
    while (!IsAtStray() && place_ < text_.size()) Step();
    return place_;
  }

 private:
  [[nodiscard]] bool IsAtStray() const {
    return place_ < text_.size() && static_cast<unsigned char>(text_[place_]) >= 0x80;
  }
  [[nodiscard]] bool StartsWith(std::string_view start) const {
    return text_.substr(place_).starts_with(start);
  }

  void Step() {
    const char c = text_[place_];
    if (c == '#') {
      place_ = std::min(text_.find('\n', place_), text_.size());
    } else if (c == '"' || c == '\'') {
      SkipString(c);
    } else {
      ++place_;
    }
  }

  // A string of one line ends with it, even if it has no other end.
  void SkipString(char quote) {
    const std::string many(3, quote);
    const bool ofManyLines = StartsWith(many);
    const std::string end = ofManyLines ? many : std::string(1, quote);
    place_ += end.size();
    while (place_ < text_.size() && !StartsWith(end)) {
      if (text_[place_] == '\n' && !ofManyLines) return;
      const bool escape = text_[place_] == '\\' && quote == '"';
      ++place_;
      if (escape && !SkipEscape()) return;
    }
    place_ = std::min(place_ + end.size(), text_.size());
    // Two more may stand before the end of such a string.
    for (int more = 0; ofManyLines && more < 2 && StartsWith(end.substr(0, 1)); ++more) ++place_;
  }

  // What follows a backslash: blanks and line ends that do not count, or one
  // character. False when that is the one looked for.
  bool SkipEscape() {
    const std::size_t next = std::min(text_.find_first_not_of(kBlanks, place_), text_.size());
    const bool blanks = next > place_;
    place_ = next;
    if (IsAtStray()) return false;
    if (!blanks && place_ < text_.size()) ++place_;
    return true;
  }

  std::string_view text_;
  std::size_t place_ = 0;
};

}  // namespace

std::optional<unsigned> LineOfStrayCharacter(std::string_view toml) {
  const std::size_t place = Scanner(toml).Find();
  if (place == toml.size()) return std::nullopt;
  return static_cast<unsigned>(std::ranges::count(toml.substr(0, place), '\n')) + 1;
}

}  // namespace vetrix
