// Characters that the parser of settings cannot be asked about.
//
// Its tables of characters beyond ASCII say nothing, not even no, of some: where it
// meets one outside of a string, what it does is undefined. It is sure of those
// beyond U+FFFF, so that others are disguised as such while it works.
#ifndef VETRIX_DISGUISE_H
#define VETRIX_DISGUISE_H

#include <optional>
#include <string>

namespace vetrix {

// Each character from U+0080 to U+FFFF becomes the one 0xF0000 further, but for a
// byte-order mark at the start. None when the text is not UTF-8, or holds such
// characters of its own, which are private and in no settings.
std::optional<std::string> Disguised(const std::string& text);

// The same backwards.
std::string Undisguised(const std::string& text);

}  // namespace vetrix

#endif
