// The module's 8-bit texts are in Mac Roman; terminals and JSON want UTF-8.
#ifndef TOOLS_PXL_MAC_ROMAN_H
#define TOOLS_PXL_MAC_ROMAN_H

#include <string>
#include <string_view>

namespace pxl {

std::string MacRomanToUtf8(std::string_view text);

}  // namespace pxl

#endif
