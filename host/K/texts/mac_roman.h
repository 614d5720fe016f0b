// Converts K's 8-bit texts: Mac OS Roman, with UTF-8 between K_ShiftOut and
// K_ShiftIn for other characters (see K_host.h).
#ifndef K_MAC_ROMAN_H
#define K_MAC_ROMAN_H

#include <string>
#include <string_view>

namespace k {

std::u16string MacRomanToUTF16(std::string_view text);
std::string MacRomanToUTF8(std::string_view text);

// Shifts only the characters that Mac OS Roman lacks, so that all ASCII characters,
// and thus markup and placeholders, remain unchanged.
std::string UTF16ToMacRoman(std::u16string_view text);

}  // namespace k

#endif
