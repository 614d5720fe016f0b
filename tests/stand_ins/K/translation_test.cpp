// Tests of translations: lookup, placeholders, characters.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "K_host.h"
#include "tests/stand_ins/K/translation_fixture.h"
#include "tests/support/host/kept_reports.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kJapanese = "\u30D4\u30AF\u30BB\u30EB";  // beyond Mac Roman

// ---- Lookup -----------------------------------------------------------------

TEST_F(Translation, ReplacesTheDefaultText) {
  Use("$$$/t/1 = World wird gepr\u00FCft");
  EXPECT_STREQ(Lookup(1),
               "World wird gepr\x9F"
               "ft");
  EXPECT_EQ(K_ZStringToUTF16String("$$$/t/1=checking world"), u"World wird gepr\u00FCft");
}

TEST_F(Translation, LeavesTextsAloneThatItDoesNotHave) {
  Use("$$$/t/1 =\n$$$/t/9 = neun\n");
  EXPECT_STREQ(Lookup(0), "");
  EXPECT_STREQ(Lookup(1), "checking world");
  EXPECT_EQ(K_ZStringToUTF16String("$$$/t/8=eight"), u"eight");
  EXPECT_EQ(K_ZStringToUTF16String("no key"), u"no key");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(Translation, LeavesTheEndEntryAsItIs) {
  Use("$$$/t/1 = eins");
  EXPECT_STREQ(Lookup(6), "");
  EXPECT_EQ(entries_[6].cache[0], ~std::uintptr_t{0});
}

TEST_F(Translation, CanBeChangedAndTakenBackAtAnyTime) {
  EXPECT_EQ(Text(1), "checking world");
  Use("$$$/t/1 = eins");
  const char* german = Lookup(1);
  EXPECT_STREQ(german, "eins");
  EXPECT_EQ(Lookup(1), german);
  Use("$$$/t/1 = un");
  EXPECT_STREQ(Lookup(1), "un");
  EXPECT_STREQ(german, "eins");
  K_SetTranslation(nullptr, nullptr, 0);
  EXPECT_STREQ(Lookup(1), "checking world");
  Use("$$$/t/1 = eins");
  EXPECT_EQ(Lookup(1), german);
}

TEST_F(Translation, ExpandsMarkup) {
  Use("$$$/t/1 = l#{rsquo}objet #{nonesuch}");
  EXPECT_EQ(Text(1), "l\u2019objet #{nonesuch}");
}

TEST_F(Translation, ServesManyThreadsWhileItChanges) {
  std::atomic<bool> done{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      while (!done) {
        const std::string text = Lookup(1);
        EXPECT_TRUE(text == "eins" || text == "un" || text == "checking world") << text;
      }
    });
  }
  for (int i = 0; i < 200; ++i) Use(i % 2 == 0 ? "$$$/t/1 = eins" : "$$$/t/1 = un");
  done = true;
  for (std::thread& thread : threads) thread.join();
  EXPECT_STREQ(Lookup(1), "un");
}

// ---- Placeholders -----------------------------------------------------------

TEST_F(Translation, KeepsItsPlaceholders) {
  Use("$$$/t/2 = %d mal %d geht nicht.\n"
      "$$$/t/3 = ^^L1 verloren\n"
      "$$$/t/4 = @2 bei @1 x @0\n"
      "$$$/t/5 = %s: %5.1f %%\n");
  EXPECT_EQ(Text(2), "%d mal %d geht nicht.");
  EXPECT_EQ(Text(3), "^^L1 verloren");
  EXPECT_EQ(Text(4), "@2 bei @1 x @0");
  EXPECT_EQ(Text(5), "%s: %5.1f %%");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(Translation, IsRefusedWithOtherPlaceholders) {
  const std::vector<std::pair<int, std::string>> wrong = {{1, "100 % geladen"},
                                                          {1, "100%"},
                                                          {1, "%s"},
                                                          {1, "%n"},
                                                          {1, "@0"},
                                                          {1, "^^L1"},
                                                          {2, "%d x"},
                                                          {2, "%d x %d x %d"},
                                                          {2, "%d x %s"},
                                                          {2, "%d x %ld"},
                                                          {2, "%2$d x %1$d"},
                                                          {2, "% d x %d"},
                                                          {2, "%d x %*d"},
                                                          {2, "%d x %d, 5 %"},
                                                          {2, "%d x %d %%"},
                                                          {3, "leaked"},
                                                          {3, "^^L2"},
                                                          {3, "^^L1 ^^L1"},
                                                          {3, "^^M1"},
                                                          {4, "@0 x @1"},
                                                          {4, "@0 x @1 @3"},
                                                          {4, "@0 x @1 @@2"},
                                                          {4, "@0 @0 @1 @2"},
                                                          {5, "%5.1f %s %%"},
                                                          {5, "%s (%5.1f)"},
                                                          {5, "%s (%.1f %%)"}};
  for (const auto& [index, text] : wrong) {
    K_SetTranslation(nullptr, nullptr, 0);
    const std::string before = Text(index);
    Use("$$$/t/" + std::to_string(index) + " = " + text);
    EXPECT_EQ(Text(index), before) << text;
    EXPECT_THAT(log_, ElementsAre("the placeholders differ from the default text's: $$$/t/" +
                                  std::to_string(index)));
    log_.clear();
  }
}

TEST_F(Translation, IsRefusedOnceInTheLog) {
  Use("$$$/t/2 = %d");
  for (int i = 0; i < 3; ++i) {
    Lookup(2);
    EXPECT_EQ(K_ZStringToUTF16String("$$$/t/2=%d x"), u"%d");
    EXPECT_EQ(K_ZStringToUTF16String("$$$/t/2=nothing"), u"nothing");
  }
  EXPECT_EQ(log_.size(), 1U);
  Use("$$$/t/2 = %d");
  Lookup(2);
  EXPECT_EQ(log_.size(), 2U);
}

// ---- Characters beyond Mac Roman --------------------------------------------

TEST_F(Translation, ReachesTheUserInAnyScript) {
  const std::string text = std::string(kJapanese) + ": \u0141\u00F3d\u017A \U0001F3AC \u00E4";
  Use("$$$/t/1 = " + text);
  EXPECT_EQ(Text(1), text);
  EXPECT_EQ(K_ZStringToUTF16String("$$$/t/1=x"),
            u"\u30D4\u30AF\u30BB\u30EB: \u0141\u00F3d\u017A \U0001F3AC \u00E4");
  KeptReports reports;
  Kp_ReportErrString(0x70003, 8, Lookup(1));
  K_ReportFailedVerification(0x70003, 1, 0, Lookup(1));
  const Reports expected = {{0x70003, 8, 0, text},
                            {0x70003, 8, 0, "failed verification 1: " + text}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST_F(Translation, ServesAsAFormatInAnyScript) {
  Use("$$$/t/2 = " + std::string(kJapanese) + "%d\u00D7%d" + std::string(kJapanese));
  KeptReports reports;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, Lookup(2), 640, 480);
  Kp_ReportError(0x70035, 8);
  EXPECT_EQ(reports.Take().at(0).text,
            std::string(kJapanese) + "640\u00D7480" + std::string(kJapanese));
}

TEST_F(Translation, MixesWithMacRomanFromElsewhere) {
  Use("$$$/t/5 = \u7D20\u6750%s\uFF08%5.1f %%\uFF09");
  KeptReports reports;
  Kp_G_err_buf = 4;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, Lookup(5),
                "\xD2"
                "caf\x8E\xD3",
                99.5);
  Kp_SysEnglishError(4);
  Kp_ReportError(1, 8);
  EXPECT_EQ(reports.Take().at(0).text,
            "\u7D20\u6750\u201Ccaf\u00E9\u201D\uFF08 99.5 %\uFF09 There is not enough memory.");
}

TEST_F(Translation, LosesOneCharacterAtMostWhereItIsCutOff) {
  Use("$$$/t/1 = " + std::string(kJapanese));
  for (std::size_t kept = 1; kept <= kJapanese.size(); ++kept) {
    const std::string text = std::string(Lookup(1), 1 + kept) + " \x8E.";
    const std::string whole(kJapanese.substr(0, kept / 3 * 3));
    const std::string lost = kept % 3 != 0 ? "\uFFFD" : "";
    EXPECT_EQ(K_TextToUTF8(text.c_str()), whole + lost + " \u00E9.") << kept;
  }
}

TEST_F(Translation, NamesAHandleInAnyScript) {
  Use("$$$/t/1 = " + std::string(kJapanese));
  KeptReports reports;
  K_SetMemoryBudget(1);
  EXPECT_EQ(K_AllocateHandleClear(0x70003, Lookup(1), 4096), nullptr);
  K_SetMemoryBudget(0);
  EXPECT_THAT(reports.Take().at(0).text, HasSubstr(kJapanese));
}

TEST(TextToUTF8, WritesWholeCharactersAndReturnsTheLengthOfAll) {
  char utf8[8];
  EXPECT_EQ(K_TextToUTF8("a\xD5"
                         "b",
                         utf8, sizeof utf8),
            5U);
  EXPECT_STREQ(utf8, "a\u2019b");
  EXPECT_EQ(K_TextToUTF8("a\xD5"
                         "b",
                         utf8, 5),
            5U);
  EXPECT_STREQ(utf8, "a\u2019");
  EXPECT_EQ(K_TextToUTF8("a\xD5"
                         "b",
                         utf8, 4),
            5U);
  EXPECT_STREQ(utf8, "a");
  EXPECT_EQ(K_TextToUTF8("a\xD5"
                         "b",
                         utf8, 1),
            5U);
  EXPECT_STREQ(utf8, "");
  EXPECT_EQ(K_TextToUTF8("abc", nullptr, 0), 3U);
  EXPECT_EQ(K_TextToUTF8(nullptr, utf8, sizeof utf8), 0U);
  EXPECT_STREQ(utf8, "");
}

TEST(TextToUTF8, MakesIllFormedShiftedTextWellFormed) {
  char utf8[32];
  K_TextToUTF8("\x0E\xFF\xE3\x81\x0F\xD5\x0E", utf8, sizeof utf8);
  EXPECT_STREQ(utf8, "\uFFFD\uFFFD\u2019\x0E");
}

}  // namespace
