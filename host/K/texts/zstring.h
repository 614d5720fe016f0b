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
// What follows the first '=', never the key: empty when there is none. The
// result is the end of `zstring`, so that it ends where `zstring` does.
std::string_view TextAfterKey(std::string_view zstring);
// The same, but a text that does not start like a key is given as it is.
std::string_view DefaultText(std::string_view zstring);

bool HasMarkup(std::string_view text);
// Puts the Mac OS Roman byte in the place of each known markup; unknown markup
// stays as it is.
std::string ExpandMarkup(std::string_view text);

}  // namespace k

#endif
