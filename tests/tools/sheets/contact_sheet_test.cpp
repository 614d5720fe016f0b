// The layout of sheets.
#include "tools/pxl/sheets/contact_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tools/pxl/sheets/label_wrap.h"

using namespace pxl;

namespace {

using Pixel = std::array<std::byte, 4>;
constexpr Pixel kRed = {std::byte{255}, std::byte{255}, std::byte{0}, std::byte{0}};

Picture Solid(int width, int height, const Pixel& pixel) {
  Picture picture = NewPicture(width, height, SampleType::Integer8);
  for (std::size_t i = 0; i < picture.pixels.size(); ++i) picture.pixels[i] = pixel.at(i % 4);
  return picture;
}

Pixel PixelAt(const Picture& picture, int x, int y) {
  Pixel pixel{};
  std::copy_n(picture.Row(y) + std::ptrdiff_t{4} * x, 4, pixel.begin());
  return pixel;
}

bool IsBlankColumn(const Picture& sheet, int x) {
  for (int y = 0; y < sheet.header.height; ++y) {
    if (PixelAt(sheet, x, y) != PixelAt(sheet, 0, 0)) return false;
  }
  return true;
}

// The left edges of the red pictures in the row.
std::vector<int> LeftEdges(const Picture& sheet, int y) {
  std::vector<int> edges;
  for (int x = 1; x < sheet.header.width; ++x) {
    if (PixelAt(sheet, x, y) == kRed && PixelAt(sheet, x - 1, y) != kRed) edges.push_back(x);
  }
  return edges;
}

bool IsBlankBlock(const Picture& sheet, int left, int top, int right, int bottom) {
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) {
      if (PixelAt(sheet, x, y) != PixelAt(sheet, 0, 0)) return false;
    }
  }
  return true;
}

int WidthOf(const Picture& sheet) {
  return static_cast<int>(sheet.header.width);
}
int HeightOf(const Picture& sheet) {
  return static_cast<int>(sheet.header.height);
}

class ContactSheet : public testing::Test {
 protected:
  Font title_{FontFile(), kTitleSize};
  Font label_{FontFile(), kLabelSize};
};

}  // namespace

TEST_F(ContactSheet, LaysPicturesOutWithEqualGutters) {
  const std::vector<SheetCell> cells(3, {Solid(120, 60, kRed), {"label"}});
  const Picture sheet = MakeContactSheet("title", cells, title_, label_);
  const int y = 2 * kSheetGutter + title_.LineHeight() + 30;
  const std::vector<int> expected = {kSheetGutter, 2 * kSheetGutter + 120, 3 * kSheetGutter + 240};
  EXPECT_EQ(LeftEdges(sheet, y), expected);
  EXPECT_EQ(sheet.header.width, 4 * kSheetGutter + 360);
}

TEST_F(ContactSheet, NeverCutsALabelOff) {
  const std::string longLabel = "a label that is very much wider than its picture";
  const Picture sheet =
      MakeContactSheet("t", {{Solid(10, 10, kRed), {"short", longLabel}}}, title_, label_);
  EXPECT_EQ(sheet.header.width, label_.Width(longLabel) + 2 * kSheetGutter);
  const int right = static_cast<int>(sheet.header.width) - kSheetGutter;
  bool inked = false;
  for (int x = right - 3; x < right; ++x) inked = inked || !IsBlankColumn(sheet, x);
  EXPECT_TRUE(inked);
  for (int x = right + 1; x < sheet.header.width; ++x) EXPECT_TRUE(IsBlankColumn(sheet, x)) << x;
}

TEST_F(ContactSheet, NeverCutsTheTitleOff) {
  const std::string title(200, 'W');
  const Picture sheet = MakeContactSheet(title, {{Solid(10, 10, kRed), {}}}, title_, label_);
  EXPECT_EQ(sheet.header.width, title_.Width(title) + 2 * kSheetGutter);
}

TEST_F(ContactSheet, IsAsTallAsItsTallestCell) {
  const Picture sheet = MakeContactSheet(
      "t", {{Solid(10, 10, kRed), {"one"}}, {Solid(10, 200, kRed), {"one", "two"}}}, title_,
      label_);
  const int bottom = static_cast<int>(sheet.header.height) - kSheetGutter;
  for (int y = bottom; y < sheet.header.height; ++y) {
    for (int x = 0; x < sheet.header.width; ++x) {
      ASSERT_EQ(PixelAt(sheet, x, y), PixelAt(sheet, 0, 0));
    }
  }
}

TEST_F(ContactSheet, ShowsAGroundThroughTransparentPictures) {
  const Picture sheet = MakeContactSheet("t", {{Solid(40, 40, Pixel{}), {"l"}}}, title_, label_);
  const int top = 2 * kSheetGutter + title_.LineHeight();
  EXPECT_NE(PixelAt(sheet, kSheetGutter, top), PixelAt(sheet, kSheetGutter + 10, top));
  for (std::size_t i = 0; i < sheet.pixels.size(); i += 4)
    ASSERT_EQ(sheet.pixels[i], std::byte{255});
}

TEST_F(ContactSheet, LeavesEqualGuttersBetweenRowsAndColumnsEmpty) {
  const int side = 120;
  const std::string label(6, 'g');
  const std::vector<SheetCell> cells(8, {Solid(side, side, kRed), {label, label}});
  const Picture sheet = MakeContactSheet("title", cells, title_, label_, {3, 0});
  const int rowHeight = side + 10 + 2 * label_.LineHeight();
  EXPECT_EQ(WidthOf(sheet), 3 * side + 4 * kSheetGutter);
  const int top = 2 * kSheetGutter + title_.LineHeight();
  EXPECT_EQ(HeightOf(sheet), top + 3 * rowHeight + 3 * kSheetGutter);
  for (int i = 0; i <= 3; ++i) {
    const int x = i * (side + kSheetGutter);
    EXPECT_TRUE(IsBlankBlock(sheet, x, top, x + kSheetGutter, HeightOf(sheet))) << i;
    const int bottom = top + i * (rowHeight + kSheetGutter);
    EXPECT_TRUE(IsBlankBlock(sheet, 0, bottom - kSheetGutter, WidthOf(sheet), bottom)) << i;
  }
  for (int i = 0; i < 8; ++i) {
    const int x = kSheetGutter + i % 3 * (side + kSheetGutter);
    const int y = top + i / 3 * (rowHeight + kSheetGutter);
    EXPECT_EQ(PixelAt(sheet, x, y), kRed) << i;
    EXPECT_EQ(PixelAt(sheet, x + side - 1, y + side - 1), kRed) << i;
    EXPECT_FALSE(IsBlankBlock(sheet, x, y + side + 10, x + side, y + rowHeight)) << i;
  }
}

TEST_F(ContactSheet, MakesEachRowAsHighAsItsHighestCell) {
  const SheetCell low = {Solid(30, 10, kRed), {}};
  const SheetCell high = {Solid(30, 50, kRed), {}};
  const Picture sheet = MakeContactSheet("t", {low, high, low, low}, title_, label_, {2, 0});
  const int second = 2 * kSheetGutter + title_.LineHeight() + 50 + 10 + kSheetGutter;
  EXPECT_NE(PixelAt(sheet, kSheetGutter, second - 1), kRed);
  EXPECT_EQ(PixelAt(sheet, kSheetGutter, second), kRed);
  EXPECT_EQ(HeightOf(sheet), second + 10 + 10 + kSheetGutter);
}

TEST_F(ContactSheet, WrapsLabelsAndTitleWhereAsked) {
  const std::string text = "a label that is very much wider than its picture";
  const Picture sheet = MakeContactSheet(text + " " + text, {{Solid(100, 10, kRed), {text}}},
                                         title_, label_, {0, 120});
  EXPECT_EQ(WidthOf(sheet), 120 + 2 * kSheetGutter);
  const auto lines = static_cast<int>(Wrapped(label_, text, 120).size());
  const auto titles = static_cast<int>(Wrapped(title_, text + " " + text, 120).size());
  EXPECT_GT(lines, 2);
  EXPECT_GT(titles, 4);
  EXPECT_EQ(HeightOf(sheet), 3 * kSheetGutter + titles * title_.LineHeight() + 10 + 10 +
                                 lines * label_.LineHeight());
  EXPECT_TRUE(
      IsBlankBlock(sheet, WidthOf(sheet) - kSheetGutter + 1, 0, WidthOf(sheet), HeightOf(sheet)));
}

TEST_F(ContactSheet, WrapsLabelsAtThePictureWhereThatIsWider) {
  const std::string text = "some words for a label";
  const Picture picture = Solid(label_.Width(text), 10, kRed);
  const Picture wide = MakeContactSheet("t", {{picture, {text}}}, title_, label_, {0, 40});
  EXPECT_EQ(WidthOf(wide), label_.Width(text) + 2 * kSheetGutter);
  EXPECT_EQ(HeightOf(wide), 3 * kSheetGutter + title_.LineHeight() + 10 + 10 + label_.LineHeight());
}

TEST_F(ContactSheet, StartsCellsOfTextAtTheTop) {
  const Picture sheet = MakeContactSheet("t", {{Solid(60, 60, kRed), {}}, {Picture{}, {"Words"}}},
                                         title_, label_, {2, 60});
  const int left = 2 * kSheetGutter + 60;
  const int top = 2 * kSheetGutter + title_.LineHeight();
  EXPECT_FALSE(IsBlankBlock(sheet, left, top, WidthOf(sheet), top + label_.LineHeight()));
  EXPECT_TRUE(IsBlankBlock(sheet, left, top + label_.LineHeight(), WidthOf(sheet), top + 60));
}
