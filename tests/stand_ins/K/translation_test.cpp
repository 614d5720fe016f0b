#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "K_host.h"
#include "TRC_host.h"
#include "host/utf8_path.h"
#include "tests/support/host/kept_reports.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kJapanese = "\u30D4\u30AF\u30BB\u30EB";  // beyond Mac Roman

// Brings the default texts back in the end.
class Translation : public testing::Test {
 protected:
  Translation() { TRC_SetSink(Keep, &log_); }
  ~Translation() override {
    K_SetTranslation(nullptr, nullptr, 0);
    TRC_SetSink(nullptr, nullptr);
  }

  // Why a translation is malformed; empty when it is not.
  static std::string ProblemOf(const std::string& text) {
    char problem[256] = "unset";
    const bool good = K_SetTranslation(text.c_str(), problem, sizeof problem) != 0;
    EXPECT_EQ(good, problem[0] == '\0');
    return problem;
  }
  static void Use(const std::string& text) { EXPECT_EQ(ProblemOf(text), ""); }

  const char* Lookup(std::int32_t index) const {
    return K_ZLookupLStrCache(&catalogue_, index, 0, 0);
  }
  std::string Text(std::int32_t index) const { return K_TextToUTF8(Lookup(index)); }

  std::array<K_LStrEntry, 7> entries_ = {{
      {"$$$/t/0=", {0, 0, 0}},
      {"$$$/t/1=checking world", {0, 0, 0}},
      {"$$$/t/2=can#{rsquo}t: %d x %d.", {0, 0, 0}},
      {"$$$/t/3=leaked ^^L1 Worlds.", {0, 0, 0}},
      {"$$$/t/4=@0 x @1 @@ @2", {0, 0, 0}},
      {"$$$/t/5=%s (%5.1f %%)", {0, 0, 0}},
      {nullptr, {~std::uintptr_t{0}, ~std::uintptr_t{0}, 0}},
  }};
  K_LStrCatalogue catalogue_ = {"test", entries_.size(), entries_.data(), 0};
  std::vector<std::string> log_;

 private:
  static void Keep(std::int32_t level, const char*, const char*, const char* text, void* context) {
    if (level >= TRC_Level_PROBLEM)
      static_cast<std::vector<std::string>*>(context)->push_back(text);
  }
};

// ---- What is looked up ------------------------------------------------------

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

TEST(TextToUTF8, GivesWholeCharactersAndTheLengthOfAll) {
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

// ---- The file ---------------------------------------------------------------

TEST_F(Translation, TakesCommentsBlanksAndEitherLineEnd) {
  Use("\xEF\xBB\xBF# comment = none\r\n"
      "\n"
      "  # indented\n"
      "\t$$$/t/1\t=\teins \r\n"
      "$$$/t/2=%d = %d\n"
      "$$$/t/3   =   \"  ^^L1 \"\n"
      "$$$/t/5 = \"%s\" (%5.1f %%)");
  EXPECT_EQ(Text(1), "eins");
  EXPECT_EQ(Text(2), "%d = %d");
  EXPECT_EQ(Text(3), "  ^^L1 ");
  EXPECT_EQ(Text(5), "\"%s\" (%5.1f %%)");
}

TEST_F(Translation, MayBeEmpty) {
  Use("");
  Use("# nothing yet");
  EXPECT_EQ(Text(1), "checking world");
}

TEST_F(Translation, IsMalformedByTheLine) {
  EXPECT_EQ(ProblemOf("# c\n\n$$$/t/1 eins\n"), "line 3: there is no '='");
  EXPECT_EQ(ProblemOf("t/1 = eins"), "line 1: the key does not start with $$$/");
  EXPECT_EQ(ProblemOf("= eins"), "line 1: the key does not start with $$$/");
  EXPECT_EQ(ProblemOf("$$$/t 1 = eins"), "line 1: the key holds blanks");
  EXPECT_EQ(ProblemOf("$$$/t/1 = eins\r\n$$$/t/2 =\r\n$$$/t/1 = zwei\r\n"),
            "line 3: the key is there already: $$$/t/1");
  EXPECT_EQ(ProblemOf("$$$/t/\r1 = a"), "line 1: the key holds a control character");
  EXPECT_EQ(ProblemOf("$$$/t/\u0085 = a"), "line 1: the key holds a control character");
  EXPECT_EQ(ProblemOf("$$$/t/1 = a\tb"), "line 1: the text holds a control character");
  EXPECT_EQ(ProblemOf("\n$$$/t/1 = \x0E\u30D4"), "line 2: the text holds a control character");
  EXPECT_EQ(ProblemOf("$$$/t/1 = \u009B"), "line 1: the text holds a control character");
  EXPECT_EQ(ProblemOf("$$$/t/1 = gepr\x9F"
                      "ft"),
            "line 1: is not UTF-8");
  EXPECT_EQ(ProblemOf("# gepr\xFC"
                      "ft"),
            "line 1: is not UTF-8");
  EXPECT_EQ(ProblemOf("\xFF\xFE#"), "line 1: is not UTF-8");
  EXPECT_EQ(ProblemOf("$$$/t/1 = \xED\xA0\x80"), "line 1: is not UTF-8");
}

TEST_F(Translation, FitsIntoAReport) {
  const std::string longest(K_LongestTranslation, 'x');
  Use("$$$/t/1 = " + longest);
  EXPECT_EQ(Text(1), longest);
  EXPECT_EQ(ProblemOf("$$$/t/1 = x" + longest), "line 1: the text is too long for a report");
}

TEST_F(Translation, StaysInForceWhenTheNextIsMalformed) {
  Use("$$$/t/1 = eins");
  EXPECT_NE(ProblemOf("$$$/t/1 = un\nrubbish"), "");
  EXPECT_EQ(Text(1), "eins");
  EXPECT_EQ(K_SetTranslation("rubbish", nullptr, 0), 0);
  EXPECT_EQ(K_SetTranslationFile("/nowhere/at/all", nullptr, 0), 0);
  EXPECT_EQ(Text(1), "eins");
}

TEST_F(Translation, TellsTheProblemInTheRoomThereIs) {
  char problem[8];
  EXPECT_EQ(K_SetTranslation("rubbish", problem, sizeof problem), 0);
  EXPECT_STREQ(problem, "line 1:");
}

// A folder of translations.
class TranslationFile : public Translation {
 protected:
  TranslationFile() { std::filesystem::create_directory(folder_); }
  ~TranslationFile() override { std::filesystem::remove_all(folder_); }

  std::string Write(const std::string& name, const std::string& text) const {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return (folder_ / name).string();
  }
  std::string FileProblem(const std::string& path) const {
    char problem[256] = "unset";
    const bool good = K_SetTranslationFile(path.c_str(), problem, sizeof problem) != 0;
    EXPECT_EQ(good, problem[0] == '\0');
    return problem;
  }
  bool SetLanguage(const char* language) const {
    return K_SetLanguage(folder_.string().c_str(), language, nullptr, 0) != 0;
  }

  std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                  ("K_translations_" + std::to_string(std::random_device{}()));
};

TEST_F(TranslationFile, IsReadWhole) {
  const std::string comments(100000, '#');
  EXPECT_EQ(FileProblem(Write("x", comments + "\n$$$/t/1 = eins")), "");
  EXPECT_EQ(Text(1), "eins");
  EXPECT_EQ(K_SetTranslationFile(nullptr, nullptr, 0), 1);
  EXPECT_EQ(Text(1), "checking world");
}

TEST_F(TranslationFile, SaysWhyItCannotBeRead) {
  EXPECT_EQ(FileProblem((folder_ / "none").string()), "No such file or directory");
  EXPECT_NE(FileProblem(folder_.string()), "");
  EXPECT_EQ(FileProblem(Write("large", std::string((4 << 20) + 1, ' '))),
            "is too large for a translation");
  EXPECT_EQ(FileProblem(Write("bad", "# c\nrubbish")), "line 2: there is no '='");
  EXPECT_EQ(FileProblem(Write("zero", std::string("$$$/t/1 = a\0b", 13))),
            "line 1: the text holds a control character");
}

TEST_F(TranslationFile, IsFoundByItsLanguage) {
  Write("de.txt", "$$$/t/1 = eins");
  Write("de-AT.txt", "$$$/t/1 = ans");
  EXPECT_TRUE(SetLanguage("de"));
  EXPECT_EQ(Text(1), "eins");
  EXPECT_TRUE(SetLanguage("de-AT"));
  EXPECT_EQ(Text(1), "ans");
  EXPECT_TRUE(SetLanguage("de-CH-1996"));
  EXPECT_EQ(Text(1), "eins");
}

TEST_F(TranslationFile, OfALanguageThatIsNotThereIsTheDefault) {
  Write("de.txt", "$$$/t/1 = eins");
  const std::initializer_list<const char*> languages = {"fr",    "",     "-",      "d",
                                                        "../de", "./de", "de.txt", nullptr};
  for (const char* language : languages) {
    EXPECT_TRUE(SetLanguage("de"));
    EXPECT_TRUE(SetLanguage(language));
    EXPECT_EQ(Text(1), "checking world");
  }
}

TEST_F(TranslationFile, HasANameInUtf8) {
  const std::string folder = (folder_ / "").string() + "\xE6\x97\xA5\xE6\x9C\xAC \xC3\xA9";
  std::filesystem::create_directory(PathOfUtf8(folder));
  std::ofstream(PathOfUtf8(folder) / "de.txt") << "$$$/t/1 = eins";
  EXPECT_EQ(K_SetLanguage(folder.c_str(), "de", nullptr, 0), 1);
  EXPECT_EQ(Text(1), "eins");
}

TEST_F(TranslationFile, OfALanguageMayBeMalformed) {
  Write("de.txt", "rubbish");
  EXPECT_FALSE(SetLanguage("de"));
}

}  // namespace
