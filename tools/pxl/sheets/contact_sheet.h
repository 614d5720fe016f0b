// A sheet of labelled pictures in rows.
#ifndef TOOLS_PXL_SHEETS_CONTACT_SHEET_H
#define TOOLS_PXL_SHEETS_CONTACT_SHEET_H

#include <filesystem>
#include <string>
#include <vector>

#include "tools/pxl/pictures/picture.h"
#include "tools/pxl/sheets/label.h"

namespace pxl {

struct SheetCell {
  Picture picture;                  // Integer8; of width 0 in a cell of text
  std::vector<std::string> labels;  // under the picture; the first in black
};

// The distance between all things on a sheet and to its edges, in pixels.
constexpr int kSheetGutter = 24;
// The size of a font for labels and for the title, in pixels.
constexpr int kLabelSize = 16;
constexpr int kTitleSize = 22;

struct SheetLayout {
  int columns = 0;    // cells in a row; 0: all
  int textWidth = 0;  // pixels; labels wrap here, or at the width of the widest
                      // picture, and the title at the end of a row; 0: never
};

// Lays the cells out under a title, row by row: equal gutters, all cells as wide
// as the widest picture or label, rows as high as their highest cell, nothing cut
// off. Transparent parts show a chequered ground. The sheet is an
// opaque Integer8 picture.
Picture MakeContactSheet(const std::string& title, const std::vector<SheetCell>& cells,
                         const Font& titleFont, const Font& labelFont,
                         const SheetLayout& layout = {});

// The same in the tool's font, as a PNG file. Throws Failure.
void WriteContactSheet(const std::filesystem::path& path, const std::string& title,
                       const std::vector<SheetCell>& cells, const SheetLayout& layout = {});

// On sheets with many pictures, in pixels: the side that pictures are fitted to, and
// the width that labels wrap at.
constexpr int kThumbnailSide = 240;
constexpr int kThumbnailText = 180;

// Throws UsageError if the ending is not .png or the file is one of the inputs, and
// Failure if no file can be created there.
void CheckSheetPlace(const std::filesystem::path& path,
                     const std::vector<std::filesystem::path>& inputs);

}  // namespace pxl

#endif
