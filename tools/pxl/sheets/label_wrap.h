// Text broken into lines.
#ifndef TOOLS_PXL_SHEETS_LABEL_WRAP_H
#define TOOLS_PXL_SHEETS_LABEL_WRAP_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/pxl/sheets/label.h"

namespace pxl {

// The text in lines no wider than `width` pixels. Lines break at blanks; a word
// wider than a line is broken between letters, at least one letter a line.
std::vector<std::string> Wrapped(const Font& font, std::string_view text, int width);

}  // namespace pxl

#endif
