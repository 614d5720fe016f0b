// The 8-bit character set of K's texts.
#ifndef K_MAC_ROMAN_H
#define K_MAC_ROMAN_H

#include <string>
#include <string_view>

namespace k {

// The code point of a Mac OS Roman byte; all are in the basic plane.
char16_t MacRomanToUTF16(unsigned char byte);

std::u16string MacRomanToUTF16(std::string_view text);
std::string MacRomanToUTF8(std::string_view text);

}  // namespace k

#endif
