// Compares the placeholders of texts.
#include "host/K/texts/placeholders.h"

#include <algorithm>
#include <string>
#include <vector>

namespace k {
namespace {

struct Placeholders {
  std::vector<std::string_view> conversions;  // in their order
  std::vector<std::string_view> numbered;     // sorted
  bool operator==(const Placeholders&) const = default;
};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The length of the conversion at the start: '%', flags, width, precision, length
// and the letter that ends it. Every '%' counts, as in a format.
std::size_t ConversionLength(std::string_view text) {
  const std::size_t end = text.find_first_not_of("-+ #0123456789.*'$hlLqjztI", 1);
  return end == std::string_view::npos ? text.size() : end + 1;
}

// The length of a placeholder such as @0 at the start, else 0.
std::size_t ReplacementLength(std::string_view text) {
  return text.size() > 1 && IsDigit(text[1]) ? 2 : 0;
}

// The length of a placeholder such as ^^L1 at the start, else 0.
std::size_t ListLength(std::string_view text) {
  return text.starts_with("^^") && text.size() > 3 && IsDigit(text[3]) ? 4 : 0;
}

// Adds the placeholder at the start of the text, if there is one. Returns the
// length of the placeholder or of the single character.
std::size_t Take(std::string_view text, Placeholders& found) {
  if (text.starts_with("@@")) return 2;
  const bool conversion = text.front() == '%';
  std::size_t length = 0;
  if (conversion) length = ConversionLength(text);
  if (text.front() == '@') length = ReplacementLength(text);
  if (text.front() == '^') length = ListLength(text);
  if (length == 0) return 1;
  (conversion ? found.conversions : found.numbered).push_back(text.substr(0, length));
  return length;
}

Placeholders PlaceholdersOf(std::string_view text) {
  Placeholders found;
  while (!text.empty()) text.remove_prefix(Take(text, found));
  std::ranges::sort(found.numbered);
  return found;
}

}  // namespace

bool HaveSamePlaceholders(std::string_view one, std::string_view other) {
  return PlaceholdersOf(one) == PlaceholdersOf(other);
}

}  // namespace k
