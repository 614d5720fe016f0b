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

int CellWidth(const std::vector<SheetCell>& cells, const Font& font) {
  int width = 0;
  for (const SheetCell& cell : cells) {
    width = std::max(width, static_cast<int>(cell.picture.header.width));
    for (const std::string& label : cell.labels) width = std::max(width, font.Width(label));
  }
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

// The mean of the channel in the square at u, v.
std::byte MeanOfSquare(const Picture& picture, std::int64_t u, std::int64_t v, std::int64_t channel,
                       std::int64_t side) {
  const std::int64_t right = std::min(u + side, picture.header.width);
  const std::int64_t bottom = std::min(v + side, picture.header.height);
  std::int64_t sum = 0;
  for (std::int64_t y = v; y < bottom; ++y) {
    for (std::int64_t x = u; x < right; ++x) {
      sum += std::to_integer<std::int64_t>(picture.Row(y)[4 * x + channel]);
    }
  }
  const std::int64_t count = (right - u) * (bottom - v);
  return static_cast<std::byte>((sum + count / 2) / count);
}

Picture Reduced(const Picture& picture, std::int64_t factor) {
  const auto shorter = [factor](std::int64_t side) { return (side + factor - 1) / factor; };
  Picture result = NewPicture(shorter(picture.header.width), shorter(picture.header.height),
                              SampleType::Integer8);
  for (std::int64_t y = 0; y < result.header.height; ++y) {
    for (std::int64_t i = 0; i < result.header.width * 4; ++i) {
      result.Rows().Row(y)[i] = MeanOfSquare(picture, i / 4 * factor, y * factor, i % 4, factor);
    }
  }
  return result;
}

Picture Enlarged(const Picture& picture, std::int64_t factor) {
  Picture result = NewPicture(picture.header.width * factor, picture.header.height * factor,
                              SampleType::Integer8);
  for (std::int64_t y = 0; y < result.header.height; ++y) {
    const std::byte* from = picture.Row(y / factor);
    std::byte* to = result.Rows().Row(y);
    for (std::int64_t x = 0; x < result.header.width; ++x) {
      std::memcpy(to + 4 * x, from + 4 * (x / factor), 4);
    }
  }
  return result;
}

}  // namespace

Picture MakeContactSheet(const std::string& title, const std::vector<SheetCell>& cells,
                         const Font& titleFont, const Font& labelFont) {
  const int cellWidth = CellWidth(cells, labelFont);
  int height = 0;
  for (const SheetCell& cell : cells) height = std::max(height, CellHeight(cell, labelFont));
  const int row = static_cast<int>(cells.size()) * (cellWidth + kSheetGutter) + kSheetGutter;
  const int width = std::max(row, titleFont.Width(title) + 2 * kSheetGutter);
  const int top = 2 * kSheetGutter + titleFont.LineHeight();

  Picture sheet = BlankSheet(width, top + height + kSheetGutter);
  titleFont.Draw(sheet, kSheetGutter, kSheetGutter, title, kInk);
  int left = kSheetGutter;
  for (const SheetCell& cell : cells) {
    DrawCell(sheet, cell, labelFont, left, top);
    left += cellWidth + kSheetGutter;
  }
  return sheet;
}

Picture Fitted(const Picture& picture, std::int64_t side) {
  const std::int64_t longest = std::max(picture.header.width, picture.header.height);
  return longest > side ? Reduced(picture, (longest + side - 1) / side)
                        : Enlarged(picture, side / longest);
}

}  // namespace pxl
