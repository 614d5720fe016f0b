// A sheet of labelled pictures side by side.
#ifndef TOOLS_PXL_CONTACT_SHEET_H
#define TOOLS_PXL_CONTACT_SHEET_H

#include <string>
#include <vector>

#include "tools/pxl/label.h"
#include "tools/pxl/picture.h"

namespace pxl {

struct SheetCell {
  Picture picture;                  // Integer8
  std::vector<std::string> labels;  // lines under the picture; the first in black
};

// The distance between all things on a sheet and to its edges, in pixels.
constexpr int kSheetGutter = 24;
// The size of a font for labels and for the title, in pixels.
constexpr int kLabelSize = 16;
constexpr int kTitleSize = 22;

// Lays the cells out in one row under a title: equal gutters, all cells as wide
// as the widest picture or label needs, nothing cut off. Transparent parts show
// a chequered ground. The sheet is an opaque Integer8 picture.
Picture MakeContactSheet(const std::string& title, const std::vector<SheetCell>& cells,
                         const Font& titleFont, const Font& labelFont);

// The Integer8 picture brought near to `side` by a whole factor: smaller until
// neither side is longer (each pixel the mean of a square), or larger as long
// as neither becomes so.
Picture Fitted(const Picture& picture, std::int64_t side);

}  // namespace pxl

#endif
