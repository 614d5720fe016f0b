#include "tools/pxl/contact_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>

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

TEST(FittedPicture, IsReducedToMeansOfSquares) {
  Picture picture = Solid(4, 2, Pixel{});
  for (int x = 0; x < 4; ++x)
    picture.Rows().Row(0)[std::ptrdiff_t{4} * x] = static_cast<std::byte>(40 * x);
  const Picture small = Fitted(picture, 2);
  ASSERT_EQ(small.header.width, 2);
  ASSERT_EQ(small.header.height, 1);
  EXPECT_EQ(PixelAt(small, 0, 0)[0], std::byte{10});
  EXPECT_EQ(PixelAt(small, 1, 0)[0], std::byte{50});
}

TEST(FittedPicture, KeepsTheEdgesOfOddSizes) {
  const Picture small = Fitted(Solid(501, 7, kRed), 100);
  EXPECT_EQ(small.header.width, 84);
  EXPECT_EQ(small.header.height, 2);
  EXPECT_EQ(PixelAt(small, 83, 1), kRed);
}

TEST(FittedPicture, IsEnlargedByWholeFactors) {
  Picture picture = Solid(2, 1, kRed);
  picture.Rows().Row(0)[4] = std::byte{9};
  const Picture large = Fitted(picture, 7);
  ASSERT_EQ(large.header.width, 6);
  ASSERT_EQ(large.header.height, 3);
  EXPECT_EQ(PixelAt(large, 2, 2), kRed);
  EXPECT_EQ(PixelAt(large, 3, 2)[0], std::byte{9});
}
