// K's 8-bit texts: Mac OS Roman, with UTF-8 between K_ShiftOut and K_ShiftIn
// for the characters that it lacks (see K_host.h).
#ifndef K_MAC_ROMAN_H
#define K_MAC_ROMAN_H

#include <string>
#include <string_view>

namespace k {

std::u16string MacRomanToUTF16(std::string_view text);
std::string MacRomanToUTF8(std::string_view text);

// The other way. Only what Mac OS Roman lacks is shifted, so that markup,
// placeholders and all else in ASCII stand in the text as they are.
std::string UTF16ToMacRoman(std::u16string_view text);

}  // namespace k

#endif
