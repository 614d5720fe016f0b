// What the parser of settings must not be given.
#ifndef VETRIX_TOML_CHARACTERS_H
#define VETRIX_TOML_CHARACTERS_H

#include <optional>
#include <string_view>

namespace vetrix {

// The line, from 1 on, of the first character beyond ASCII that stands where TOML has
// none: outside of strings and comments, or after a backslash. There the parser's
// tables of such characters hold for some of them only.
std::optional<unsigned> LineOfStrayCharacter(std::string_view toml);

}  // namespace vetrix

#endif
