// Tests of the form of translations, and of their files and folders.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "K_host.h"
#include "host/utf8_path.h"
#include "tests/stand_ins/K/translation_fixture.h"

namespace {

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
  EXPECT_EQ(ProblemOf("$$$/t 1 = eins"), "line 1: the key contains blanks");
  EXPECT_EQ(ProblemOf("$$$/t/1 = eins\r\n$$$/t/2 =\r\n$$$/t/1 = zwei\r\n"),
            "line 3: the key occurs twice: $$$/t/1");
  EXPECT_EQ(ProblemOf("$$$/t/\r1 = a"), "line 1: the key contains a control character");
  EXPECT_EQ(ProblemOf("$$$/t/\u0085 = a"), "line 1: the key contains a control character");
  EXPECT_EQ(ProblemOf("$$$/t/1 = a\tb"), "line 1: the text contains a control character");
  EXPECT_EQ(ProblemOf("\n$$$/t/1 = \x0E\u30D4"), "line 2: the text contains a control character");
  EXPECT_EQ(ProblemOf("$$$/t/1 = \u009B"), "line 1: the text contains a control character");
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

TEST_F(Translation, CutsTheProblemToTheRoomForIt) {
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
            "line 1: the text contains a control character");
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
