// What drawing letters takes, whatever library knows their shapes.
#ifndef TOOLS_PXL_SHEETS_LABEL_DRAWING_H
#define TOOLS_PXL_SHEETS_LABEL_DRAWING_H

#include <string_view>

#include "tools/pxl/sheets/label.h"

namespace pxl {

// Takes one code point off the front. Bytes that are no UTF-8 stand for
// themselves: file names may hold anything.
char32_t TakeCodePoint(std::string_view& text);

// A letter's shape: how much of each pixel it covers, 0..255.
struct Coverage {
  const unsigned char* first;
  int width, height;
  int rowBytes;
};

// Lays the colour over an opaque Integer8 picture. What lies outside the picture
// is left out.
void DrawCoverage(Picture& picture, const Coverage& shape, int left, int top, Colour colour);

}  // namespace pxl

#endif
