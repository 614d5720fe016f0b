// Text drawn and wrapped.
#include "tools/pxl/sheets/label.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tools/pxl/sheets/label_wrap.h"
#include "tools/pxl/system/failure.h"

using namespace pxl;

namespace {

constexpr Colour kWhite = {255, 255, 255};

Picture BlackPicture(int width, int height) {
  Picture picture = NewPicture(width, height, SampleType::Integer8);
  for (std::size_t i = 0; i < picture.pixels.size(); i += 4) picture.pixels[i] = std::byte{255};
  return picture;
}

bool HasInk(const Picture& picture, int x, int y) {
  return picture.Row(y)[4 * x + 1] != std::byte{0};
}

struct Extent {
  int left = 100000, top = 100000, right = -1, bottom = -1;
};

Extent InkIn(const Picture& picture) {
  Extent ink;
  for (int y = 0; y < picture.header.height; ++y) {
    for (int x = 0; x < picture.header.width; ++x) {
      if (!HasInk(picture, x, y)) continue;
      ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x),
             std::max(ink.bottom, y)};
    }
  }
  return ink;
}

}  // namespace

TEST(Label, StaysWithinItsWidthAndLine) {
  const Font font(FontFile(), 16);
  Picture picture = BlackPicture(400, 100);
  const std::string text = "Width of gjpqy, 128 bits";
  font.Draw(picture, 20, 30, text, kWhite);
  const Extent ink = InkIn(picture);
  // A glyph may reach a pixel into its neighbour's place.
  EXPECT_GE(ink.left, 19);
  EXPECT_LE(ink.right, 20 + font.Width(text));
  EXPECT_GE(ink.top, 30);
  EXPECT_LT(ink.bottom, 30 + font.LineHeight());
  EXPECT_GT(ink.right - ink.left, font.Width(text) - 4);
}

TEST(Label, IsAsTallAsItsFontIs) {
  EXPECT_GE(Font(FontFile(), 14).LineHeight(), 14);
  EXPECT_GT(Font(FontFile(), 28).Width("m"), Font(FontFile(), 14).Width("m"));
}

TEST(Label, IsUtf8) {
  const Font font(FontFile(), 16);
  // One letter, not two.
  EXPECT_EQ(font.Width("\u00E9"), font.Width("e"));
  EXPECT_GT(font.Width("\xFF\xC3"), 0);
}

TEST(Label, BeyondThePictureIsLeftOut) {
  const Font font(FontFile(), 16);
  Picture picture = BlackPicture(8, 8);
  font.Draw(picture, -5, -5, "WWWW", kWhite);
  font.Draw(picture, 6, 6, "WWWW", kWhite);
  EXPECT_GE(InkIn(picture).right, 0);
}

TEST(Label, NeedsAFont) {
  EXPECT_THROW(Font("/dev/null", 16), Failure);
}

TEST(WrappedLabel, IsBrokenAtBlanksOnly) {
  const Font font(FontFile(), 16);
  const std::string text = "words of a label that takes several lines";
  for (int width = font.Width("several"); width < font.Width(text); width += 7) {
    std::string joined;
    for (const std::string& line : Wrapped(font, text, width)) {
      EXPECT_LE(font.Width(line), width);
      joined += (joined.empty() ? "" : " ") + line;
    }
    EXPECT_EQ(joined, text);
  }
}

TEST(WrappedLabel, FillsItsLines) {
  const Font font(FontFile(), 16);
  EXPECT_EQ(Wrapped(font, "one two", font.Width("one two")), std::vector<std::string>{"one two"});
  EXPECT_EQ(Wrapped(font, "one two", font.Width("one two") - 1),
            (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(Wrapped(font, "  one   two ", font.Width("one t")),
            (std::vector<std::string>{"one", "two"}));
}

TEST(WrappedLabel, BreaksWordsThatAreLongerThanALineBetweenLetters) {
  const Font font(FontFile(), 16);
  const std::string word = "\u00E9\u00E9\u00E9\u00E9\u00E9";
  EXPECT_EQ(Wrapped(font, word, font.Width("\u00E9\u00E9")),
            (std::vector<std::string>{"\u00E9\u00E9", "\u00E9\u00E9", "\u00E9"}));
  EXPECT_EQ(Wrapped(font, word, 1).size(), 5U);
  EXPECT_EQ(Wrapped(font, "\xC3", 1).size(), 1U);
}

TEST(WrappedLabel, MayBeEmpty) {
  const Font font(FontFile(), 16);
  EXPECT_TRUE(Wrapped(font, "", 100).empty());
  EXPECT_TRUE(Wrapped(font, "  ", 100).empty());
}
