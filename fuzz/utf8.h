// What UTF-8 is, from its definition alone.
#ifndef FUZZ_UTF8_H
#define FUZZ_UTF8_H

#include <string_view>

namespace fuzz {

// No byte out of place, nothing longer than it need be, no surrogate, nothing above
// U+10FFFF.
bool IsUTF8(std::string_view text);

}  // namespace fuzz

#endif
