#include "tools/pxl/mac_roman.h"

#include <gtest/gtest.h>

using pxl::MacRomanToUtf8;

TEST(MacRoman, LeavesAsciiAlone) {
  std::string ascii;
  for (char c = 1; c < 127; ++c) ascii.push_back(c);
  EXPECT_EQ(MacRomanToUtf8(ascii), ascii);
}

TEST(MacRoman, TurnsQuotationMarksAndLettersIntoUtf8) {
  EXPECT_EQ(MacRomanToUtf8("can\xD5t"), "can\u2019t");
  EXPECT_EQ(MacRomanToUtf8("\xD2\x8A\xD3"), "\u201C\u00E4\u201D");
  EXPECT_EQ(MacRomanToUtf8("\xDB"), "\u20AC");
  EXPECT_EQ(MacRomanToUtf8("\x80\xFF"), "\u00C4\u02C7");
}
