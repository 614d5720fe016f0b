// Tests of catalogue texts, markup and Mac OS Roman.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "K_host.h"

namespace {

// The upper half of Mac OS Roman as published, from 0x80 to 0xFF.
constexpr std::u16string_view kUpperHalf =
    u"\u00C4\u00C5\u00C7\u00C9\u00D1\u00D6\u00DC\u00E1"
    u"\u00E0\u00E2\u00E4\u00E3\u00E5\u00E7\u00E9\u00E8"
    u"\u00EA\u00EB\u00ED\u00EC\u00EE\u00EF\u00F1\u00F3"
    u"\u00F2\u00F4\u00F6\u00F5\u00FA\u00F9\u00FB\u00FC"
    u"\u2020\u00B0\u00A2\u00A3\u00A7\u2022\u00B6\u00DF"
    u"\u00AE\u00A9\u2122\u00B4\u00A8\u2260\u00C6\u00D8"
    u"\u221E\u00B1\u2264\u2265\u00A5\u00B5\u2202\u2211"
    u"\u220F\u03C0\u222B\u00AA\u00BA\u03A9\u00E6\u00F8"
    u"\u00BF\u00A1\u00AC\u221A\u0192\u2248\u2206\u00AB"
    u"\u00BB\u2026\u00A0\u00C0\u00C3\u00D5\u0152\u0153"
    u"\u2013\u2014\u201C\u201D\u2018\u2019\u00F7\u25CA"
    u"\u00FF\u0178\u2044\u20AC\u2039\u203A\uFB01\uFB02"
    u"\u2021\u00B7\u201A\u201E\u2030\u00C2\u00CA\u00C1"
    u"\u00CB\u00C8\u00CD\u00CE\u00CF\u00CC\u00D3\u00D4"
    u"\uF8FF\u00D2\u00DA\u00DB\u00D9\u0131\u02C6\u02DC"
    u"\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";

TEST(ZString, DecodesEveryMacRomanByte) {
  ASSERT_EQ(kUpperHalf.size(), 128U);
  for (int byte = 1; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const auto expected = byte < 0x80 ? static_cast<char16_t>(byte)
                                      : kUpperHalf[static_cast<std::size_t>(byte - 0x80)];
    EXPECT_EQ(K_ZStringToUTF16String(text.c_str()), std::u16string(1, expected)) << byte;
  }
}

TEST(ZString, ReturnsTheTextAfterTheKey) {
  EXPECT_EQ(K_ZStringToUTF16String("$$$/ov/PXL_MemMappedFile/MapFailre=Unable to map."),
            u"Unable to map.");
  EXPECT_EQ(K_ZStringToUTF16String("$$$/key=a = b"), u"a = b");
  EXPECT_EQ(K_ZStringToUTF16String("$$$/key="), u"");
  EXPECT_EQ(K_ZStringToUTF16String("$$$/key"), u"");
}

TEST(ZString, ReturnsATextWithoutAKeyUnchanged) {
  EXPECT_EQ(K_ZStringToUTF16String("a = b"), u"a = b");
  EXPECT_EQ(K_ZStringToUTF16String(""), u"");
  EXPECT_EQ(K_ZStringToUTF16String(nullptr), u"");
}

TEST(ZString, ExpandsMarkup) {
  EXPECT_EQ(K_ZStringToUTF16String("$$$/k=#{ldquo}can#{rsquo}t#{rdquo} #{ndash} #{hellip}#{mdash}"),
            u"\u201Ccan\u2019t\u201D \u2013 \u2026\u2014");
  EXPECT_EQ(K_ZStringToUTF16String("#{lsquo}a#{rsquo}"), u"\u2018a\u2019");
}

TEST(ZString, KeepsMarkupThatItDoesNotKnow) {
  EXPECT_EQ(K_ZStringToUTF16String("#{nonesuch} #{} #{rsquo #rsquo"),
            u"#{nonesuch} #{} #{rsquo #rsquo");
  EXPECT_EQ(K_ZStringToUTF16String("#{a#{rsquo}"), u"#{a\u2019");
}

TEST(ZString, LeavesPlaceholdersAlone) {
  EXPECT_EQ(K_ZStringToUTF16String("$$$/k=@0 x @1 @@ @2 ^^L1 %d"), u"@0 x @1 @@ @2 ^^L1 %d");
}

// A catalogue like that of a module.
class Catalogue : public testing::Test {
 protected:
  const char* Lookup(std::int32_t index) const {
    return K_ZLookupLStrCache(&catalogue_, index, 0, 0);
  }

  std::array<K_LStrEntry, 6> entries_ = {{
      {"$$$/OV/PXL/LStr/0000=", {0, 0, 0}},
      {"$$$/OV/PXL/LStr/0001=PXL unborn.", {0, 0, 0}},
      {"$$$/OV/PXL/LStr/0002=can#{rsquo}t set (%d = %d).", {0, 0, 0}},
      {"$$$/OV/PXL/LStr/0003", {0, 0, 0}},
      {"$$$/OV/PXL/LStr/0004=#{nonesuch}", {0, 0, 0}},
      {nullptr, {~std::uintptr_t{0}, ~std::uintptr_t{0}, 0}},
  }};
  K_LStrCatalogue catalogue_ = {"PXL", entries_.size(), entries_.data(), 0};
};

TEST_F(Catalogue, ReturnsTheTextAfterTheFirstEqualsSign) {
  EXPECT_STREQ(Lookup(0), "");
  EXPECT_STREQ(Lookup(1), "PXL unborn.");
}

TEST_F(Catalogue, ExpandsMarkupToMacRoman) {
  EXPECT_STREQ(Lookup(2), "can\xD5t set (%d = %d).");
  EXPECT_STREQ(Lookup(4), "#{nonesuch}");
}

TEST_F(Catalogue, NeverReturnsTheKey) {
  EXPECT_STREQ(Lookup(3), "");
}

TEST_F(Catalogue, ReturnsAnEmptyTextForAMissingEntry) {
  EXPECT_STREQ(Lookup(5), "");
  EXPECT_STREQ(Lookup(6), "");
  EXPECT_STREQ(Lookup(-1), "");
  EXPECT_STREQ(K_ZLookupLStrCache(nullptr, 0, 0, 0), "");
  const K_LStrCatalogue empty = {"none", 1, nullptr, 0};
  EXPECT_STREQ(K_ZLookupLStrCache(&empty, 0, 0, 0), "");
}

TEST_F(Catalogue, LeavesTheEndEntryAsItIs) {
  Lookup(5);
  EXPECT_EQ(entries_[5].cache[0], ~std::uintptr_t{0});
  EXPECT_EQ(entries_[5].cache[1], ~std::uintptr_t{0});
  EXPECT_EQ(entries_[5].cache[2], 0U);
}

TEST_F(Catalogue, ReturnsTheSameAddressAgain) {
  for (std::int32_t index : {1, 2, 4}) {
    const char* first = Lookup(index);
    EXPECT_NE(entries_[static_cast<std::size_t>(index)].cache[0], 0U);
    EXPECT_EQ(Lookup(index), first);
  }
}

TEST_F(Catalogue, PointsIntoTheKeyWhereThereIsNoMarkup) {
  EXPECT_EQ(Lookup(1), entries_[1].key + 21);
}

TEST_F(Catalogue, ServesManyThreads) {
  std::vector<std::thread> threads;
  std::array<const char*, 4> texts{};
  for (const char*& text : texts) threads.emplace_back([this, &text] { text = Lookup(2); });
  for (std::thread& thread : threads) thread.join();
  for (const char* text : texts) EXPECT_EQ(text, Lookup(2));
}

}  // namespace
