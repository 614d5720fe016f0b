// Lays out and draws sheets of labelled pictures.
#include "tools/pxl/sheets/contact_sheet.h"

#include <algorithm>

#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/pictures/opaque.h"
#include "tools/pxl/sheets/label_wrap.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/output_file.h"

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

Picture BlankSheet(int width, int height) {
  Picture sheet = NewPicture(width, height, SampleType::Integer8);
  for (std::size_t i = 0; i < sheet.pixels.size(); i += 4) {
    sheet.pixels[i] = std::byte{255};
    sheet.pixels[i + 1] = std::byte{kPaper.red};
    sheet.pixels[i + 2] = std::byte{kPaper.green};
    sheet.pixels[i + 3] = std::byte{kPaper.blue};
  }
  return sheet;
}

void Place(Picture& sheet, const Picture& picture, int left, int top) {
  for (std::int64_t y = 0; y < picture.header.height; ++y) {
    std::byte* to = sheet.Rows().Row(top + y) + std::ptrdiff_t{4} * left;
    const std::byte* from = picture.Row(y);
    for (std::int64_t x = 0; x < picture.header.width; ++x, from += 4, to += 4) {
      LayOver(from, (x / kSquare + y / kSquare) % 2 == 0 ? kLightSquare : kDarkSquare, to);
    }
  }
}

struct Line {
  std::string text;
  Colour colour;
};

// A picture, or none, over lines of text.
struct Block {
  const Picture* picture;
  std::vector<Line> lines;

  bool IsText() const { return picture->header.width == 0; }
  // From the block's top to its first line.
  int TextTop() const {
    return IsText() ? 0 : static_cast<int>(picture->header.height) + kLabelGap;
  }
};

int WidestLine(const std::vector<Line>& lines, const Font& font) {
  int width = 0;
  for (const Line& line : lines) width = std::max(width, font.Width(line.text));
  return width;
}

void DrawLines(Picture& sheet, const std::vector<Line>& lines, const Font& font, int left,
               int top) {
  for (const Line& line : lines) {
    font.Draw(sheet, left, top, line.text, line.colour);
    top += font.LineHeight();
  }
}

std::vector<Line> WrappedLines(const std::vector<std::string>& texts, const Font& font, int width) {
  std::vector<Line> lines;
  for (const std::string& text : texts) {
    const Colour colour = &text == &texts.front() ? kInk : kPencil;
    const auto parts = width > 0 ? Wrapped(font, text, width) : std::vector<std::string>{text};
    for (const std::string& part : parts) lines.push_back({part, colour});
  }
  return lines;
}

// All cells of a sheet, in rows of equal columns.
class Grid {
 public:
  Grid(const std::vector<SheetCell>& cells, const Font& font, const SheetLayout& layout)
      : font_(font),
        columns_(layout.columns > 0 ? static_cast<std::size_t>(layout.columns) : cells.size()) {
    for (const SheetCell& cell : cells) {
      width_ = std::max(width_, static_cast<int>(cell.picture.header.width));
    }
    const int textWidth = layout.textWidth > 0 ? std::max(layout.textWidth, width_) : 0;
    for (const SheetCell& cell : cells) {
      blocks_.push_back({&cell.picture, WrappedLines(cell.labels, font, textWidth)});
      width_ = std::max(width_, WidestLine(blocks_.back().lines, font));
    }
    width_ = std::max(width_, layout.textWidth);
  }

  int Width() const { return static_cast<int>(columns_) * (width_ + kSheetGutter) - kSheetGutter; }

  int Height() const {
    int height = -kSheetGutter;
    for (std::size_t i = 0; i < blocks_.size(); i += columns_) {
      height += RowHeight(i) + kSheetGutter;
    }
    return height;
  }

  void Draw(Picture& sheet, int left, int top) const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
      const auto column = static_cast<int>(i % columns_);
      if (i > 0 && column == 0) top += RowHeight(i - columns_) + kSheetGutter;
      DrawBlock(sheet, blocks_[i], left + column * (width_ + kSheetGutter), top);
    }
  }

 private:
  void DrawBlock(Picture& sheet, const Block& block, int left, int top) const {
    Place(sheet, *block.picture, left, top);
    DrawLines(sheet, block.lines, font_, left, top + block.TextTop());
  }

  // The height of the row that starts with block `first`.
  int RowHeight(std::size_t first) const {
    int height = 0;
    for (std::size_t i = first; i < std::min(first + columns_, blocks_.size()); ++i) {
      const Block& block = blocks_[i];
      height = std::max(
          height, block.TextTop() + font_.LineHeight() * static_cast<int>(block.lines.size()));
    }
    return height;
  }

  const Font& font_;
  std::size_t columns_;
  int width_ = 0;  // of a column
  std::vector<Block> blocks_;
};

}  // namespace

Picture MakeContactSheet(const std::string& title, const std::vector<SheetCell>& cells,
                         const Font& titleFont, const Font& labelFont, const SheetLayout& layout) {
  const Grid grid(cells, labelFont, layout);
  const std::vector<Line> heading =
      WrappedLines({title}, titleFont, layout.textWidth > 0 ? grid.Width() : 0);
  const int width = std::max(grid.Width(), WidestLine(heading, titleFont));
  const int top = 2 * kSheetGutter + titleFont.LineHeight() * static_cast<int>(heading.size());

  Picture sheet = BlankSheet(width + 2 * kSheetGutter, top + grid.Height() + kSheetGutter);
  DrawLines(sheet, heading, titleFont, kSheetGutter, kSheetGutter);
  grid.Draw(sheet, kSheetGutter, top);
  return sheet;
}

void WriteContactSheet(const std::filesystem::path& path, const std::string& title,
                       const std::vector<SheetCell>& cells, const SheetLayout& layout) {
  const std::filesystem::path file = FontFile();
  const Picture sheet =
      MakeContactSheet(title, cells, Font(file, kTitleSize), Font(file, kLabelSize), layout);
  WritePictureFile(path, FileFormat::Png, sheet.header,
                   [&](std::int64_t y) { return sheet.Row(y); });
}

void CheckSheetPlace(const std::filesystem::path& path,
                     const std::vector<std::filesystem::path>& inputs) {
  if (FormatOfName(path) != FileFormat::Png) {
    throw UsageError(path.string(), "the ending must be .png");
  }
  for (const std::filesystem::path& input : inputs) RefuseInput(path, input);
  CheckOutputPlace(path);
}

}  // namespace pxl
