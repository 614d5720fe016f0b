#include "tools/pxl/contact_sheet.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace pxl {
namespace {

constexpr Colour kPaper = {250, 250, 248};
constexpr Colour kInk = {24, 24, 28};
constexpr Colour kPencil = {92, 92, 100};
constexpr int kLabelGap = 10;  // between a picture and its labels

// The squares that show through a transparent picture.
constexpr int kSquare = 10;
constexpr unsigned kLightSquare = 255;
constexpr unsigned kDarkSquare = 212;

void SetPixel(std::byte* pixel, Colour colour) {
  pixel[0] = std::byte{255};
  pixel[1] = std::byte{colour.red};
  pixel[2] = std::byte{colour.green};
  pixel[3] = std::byte{colour.blue};
}

Picture BlankSheet(int width, int height) {
  Picture sheet = NewPicture(width, height, SampleType::Integer8);
  for (std::size_t i = 0; i < sheet.pixels.size(); i += 4) SetPixel(&sheet.pixels[i], kPaper);
  return sheet;
}

// A channel with straight alpha over a grey ground.
std::uint8_t Over(std::byte value, std::byte alpha, unsigned ground) {
  const auto v = std::to_integer<unsigned>(value);
  const auto a = std::to_integer<unsigned>(alpha);
  return static_cast<std::uint8_t>((v * a + ground * (255U - a) + 127U) / 255U);
}

void Place(Picture& sheet, const Picture& picture, int left, int top) {
  for (std::int64_t y = 0; y < picture.header.height; ++y) {
    std::byte* to = sheet.Rows().Row(top + y) + std::ptrdiff_t{4} * left;
    const std::byte* from = picture.Row(y);
    for (std::int64_t x = 0; x < picture.header.width; ++x, from += 4, to += 4) {
      const unsigned ground = (x / kSquare + y / kSquare) % 2 == 0 ? kLightSquare : kDarkSquare;
      SetPixel(to, {Over(from[1], from[0], ground), Over(from[2], from[0], ground),
                    Over(from[3], from[0], ground)});
    }
  }
}

int CellWidth(const SheetCell& cell, const Font& font) {
  int width = static_cast<int>(cell.picture.header.width);
  for (const std::string& label : cell.labels) width = std::max(width, font.Width(label));
  return width;
}

int CellHeight(const SheetCell& cell, const Font& font) {
  return static_cast<int>(cell.picture.header.height) + kLabelGap +
         font.LineHeight() * static_cast<int>(cell.labels.size());
}

void DrawCell(Picture& sheet, const SheetCell& cell, const Font& font, int left, int top) {
  Place(sheet, cell.picture, left, top);
  int y = top + static_cast<int>(cell.picture.header.height) + kLabelGap;
  for (const std::string& label : cell.labels) {
    font.Draw(sheet, left, y, label, &label == &cell.labels.front() ? kInk : kPencil);
    y += font.LineHeight();
  }
}

}  // namespace

Picture MakeContactSheet(const std::string& title, const std::vector<SheetCell>& cells,
                         const Font& titleFont, const Font& labelFont) {
  int width = kSheetGutter;
  int height = 0;
  for (const SheetCell& cell : cells) {
    width += CellWidth(cell, labelFont) + kSheetGutter;
    height = std::max(height, CellHeight(cell, labelFont));
  }
  width = std::max(width, titleFont.Width(title) + 2 * kSheetGutter);
  const int top = 2 * kSheetGutter + titleFont.LineHeight();

  Picture sheet = BlankSheet(width, top + height + kSheetGutter);
  titleFont.Draw(sheet, kSheetGutter, kSheetGutter, title, kInk);
  int left = kSheetGutter;
  for (const SheetCell& cell : cells) {
    DrawCell(sheet, cell, labelFont, left, top);
    left += CellWidth(cell, labelFont) + kSheetGutter;
  }
  return sheet;
}

Picture Reduced(const Picture& picture, std::int64_t width) {
  const std::int64_t factor = (picture.header.width + width - 1) / width;
  if (factor <= 1) return picture;
  Picture small =
      NewPicture(std::max<std::int64_t>(1, picture.header.width / factor),
                 std::max<std::int64_t>(1, picture.header.height / factor), SampleType::Integer8);
  for (std::int64_t y = 0; y < small.header.height; ++y) {
    for (std::int64_t x = 0; x < small.header.width * 4; ++x) {
      std::uint64_t sum = 0;
      std::uint64_t count = 0;
      for (std::int64_t v = y * factor; v < std::min((y + 1) * factor, picture.header.height);
           ++v) {
        const std::byte* row = picture.Row(v);
        for (std::int64_t u = x / 4 * factor; u < (x / 4 + 1) * factor; ++u, ++count) {
          sum += std::to_integer<std::uint64_t>(row[4 * u + x % 4]);
        }
      }
      small.Rows().Row(y)[x] = static_cast<std::byte>((sum + count / 2) / count);
    }
  }
  return small;
}

}  // namespace pxl
