// ZStrings: 8-bit texts of the form "$$$/key path=default text", in Mac OS
// Roman, with markup such as #{rsquo} for typographic characters.
#ifndef K_ZSTRING_H
#define K_ZSTRING_H

#include <string>
#include <string_view>

namespace k {

inline constexpr std::string_view kKeyPrefix = "$$$/";

// The key, up to the first '='; empty when the text has none.
std::string_view KeyOf(std::string_view zstring);
// The text after the first '='; empty when there is no '='. It ends where `zstring`
// ends, so its data are terminated like those of `zstring`.
std::string_view TextAfterKey(std::string_view zstring);
// Like TextAfterKey, but returns a text without a key unchanged.
std::string_view DefaultText(std::string_view zstring);

bool HasMarkup(std::string_view text);
// Replaces each known markup by its Mac OS Roman byte; unknown markup remains.
std::string ExpandMarkup(std::string_view text);

}  // namespace k

#endif
