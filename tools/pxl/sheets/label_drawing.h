// The part of drawing letters that does not depend on the font library.
#ifndef TOOLS_PXL_SHEETS_LABEL_DRAWING_H
#define TOOLS_PXL_SHEETS_LABEL_DRAWING_H

#include <string_view>

#include "tools/pxl/sheets/label.h"

namespace pxl {

// Removes the first code point and returns it. Bytes that are not UTF-8 are returned
// as they are: file names may hold any bytes.
char32_t TakeCodePoint(std::string_view& text);

// The shape of a letter: the coverage of each pixel, 0..255.
struct Coverage {
  const unsigned char* first;
  int width, height;
  int rowBytes;
};

// Lays the colour over an opaque Integer8 picture. Pixels outside the picture are
// left out.
void DrawCoverage(Picture& picture, const Coverage& shape, int left, int top, Colour colour);

}  // namespace pxl

#endif
