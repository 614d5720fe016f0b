// Pictures on the sheets that the program writes.
#ifndef TESTS_TOOLS_SUPPORT_SHEET_PICTURES_H
#define TESTS_TOOLS_SUPPORT_SHEET_PICTURES_H

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/pictures/picture.h"

using Pixel8 = std::array<std::uint8_t, 4>;  // alpha, red, green, blue
using PixelFunction = std::function<Pixel8(int x, int y)>;

// An Integer8 picture.
pxl::Picture PictureBy(int width, int height, const PixelFunction& pixel);
Pixel8 PixelOf(const pxl::Picture& picture, int x, int y);
void SavePng(const std::filesystem::path& path, const pxl::Picture& picture);

// The part of a picture with its upper left corner there.
pxl::Picture PartOf(const pxl::Picture& picture, int left, int top, int width, int height);
// The first row from `top` on at which the sheet shows the picture, with its
// left edge there; none if it does not.
std::optional<int> FindBelow(const pxl::Picture& sheet, const pxl::Picture& picture, int left,
                             int top);
// The left edge of a column of cells as wide as that.
int ColumnLeft(int column, int cellWidth);

// One of the 256 standard colours, and the nearest of them to a colour: the
// smallest sum of squared differences, at a tie the lowest index.
bool IsStandardColour(const Pixel8& pixel);
Pixel8 NearestStandardColour(const Pixel8& pixel);

// Expects that exit code, one line that begins so, and no sheet.png in the folder.
void ExpectNoSheet(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                   int code, const std::string& line);

// Compares the file with tests/data/golden/NAME, pixel by pixel. If they
// differ, the new one is kept, and the failure has its path.
void ExpectGolden(const std::filesystem::path& file, const std::string& name);

#endif
