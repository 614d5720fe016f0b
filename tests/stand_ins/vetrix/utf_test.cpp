// Tests of the conversion between UTF-8 and UTF-16.
#include <gtest/gtest.h>

#include <string>

#include "platform/vetrix.h"

namespace {

using vetrix::utility::UTF16to8;
using vetrix::utility::UTF8to16;

std::u16string EveryCharacter() {
  std::u16string all;
  for (char32_t c = 0; c < 0x10000; ++c) {
    if (c < 0xD800 || c > 0xDFFF) all += static_cast<char16_t>(c);
  }
  for (char32_t c = 0x10000; c < 0x110000; ++c) {
    all += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
    all += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
  }
  return all;
}

TEST(UTF, GivesEveryCharacterBack) {
  const std::u16string all = EveryCharacter();
  EXPECT_EQ(UTF8to16(UTF16to8(all)), all);
}

TEST(UTF, ConvertsEachLengthOfSequence) {
  EXPECT_EQ(UTF16to8(u"a\u00E9\u2019\U0001D11E"), "a\xC3\xA9\xE2\x80\x99\xF0\x9D\x84\x9E");
  EXPECT_EQ(UTF8to16("a\xC3\xA9\xE2\x80\x99\xF0\x9D\x84\x9E"), u"a\u00E9\u2019\U0001D11E");
}

TEST(UTF, KeepsZerosInsideATextAndEmptyTexts) {
  EXPECT_EQ(UTF16to8(std::u16string(u"a\0b", 3)), std::string("a\0b", 3));
  EXPECT_EQ(UTF8to16(std::string("a\0b", 3)), std::u16string(u"a\0b", 3));
  EXPECT_EQ(UTF16to8(u""), "");
  EXPECT_EQ(UTF8to16(""), u"");
}

TEST(UTF, ReplacesLoneSurrogates) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(UTF16to8({u'a', 0xD834, u'b'}), "a" + replacement + "b");
  EXPECT_EQ(UTF16to8({u'a', 0xDD1E, u'b'}), "a" + replacement + "b");
  EXPECT_EQ(UTF16to8({u'a', 0xD834}), "a" + replacement);
  EXPECT_EQ(UTF16to8({0xDD1E, 0xD834}), replacement + replacement);
  EXPECT_EQ(UTF16to8({0xD834, 0xD834, 0xDD1E}), replacement + "\xF0\x9D\x84\x9E");
}

TEST(UTF, ReplacesIllFormedBytes) {
  EXPECT_EQ(UTF8to16("a\xFF"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(UTF8to16("a\x80"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(UTF8to16("a\xE2\x82"), u"a\uFFFD");
  EXPECT_EQ(UTF8to16("\xC3"
                     "(b"),
            u"\uFFFD(b");
}

TEST(UTF, NeverReturnsIllFormedText) {
  const std::string bad[] = {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80",
                             "\xF0\x9D\x84"};
  for (const std::string& text : bad) {
    const std::u16string result = UTF8to16("<" + text + ">");
    EXPECT_EQ(result.front(), u'<');
    EXPECT_EQ(result.back(), u'>');
    EXPECT_EQ(result.find_first_not_of(u'\uFFFD', 1), result.size() - 1) << text;
    EXPECT_GT(result.size(), 2U);
  }
}

}  // namespace
