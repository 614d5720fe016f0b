// The translations that come with K, and every text of the module in a language
// made for the test.
#include <algorithm>

#include "TRC_host.h"
#include "platform/vetrix.h"
#include "tests/integration/zstrings.h"
#include "tests/support/host/whole.h"

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

const Texts& DefaultTexts() {
  static const Texts texts = ZStringsIn(PXL_LIBRARY);
  return texts;
}

std::vector<std::string> KeysOf(const Texts& texts) {
  std::vector<std::string> keys;
  for (const auto& [key, text] : texts) keys.push_back(key);
  return keys;
}

// Entry n in the language in force.
std::string Text(std::int32_t index) {
  return K_TextToUTF8(K_ZLookupLStrCache(PXL_G_zref, index, 0, 0));
}

std::int32_t CountTexts() {
  return static_cast<std::int32_t>(PXL_G_zref->count) - 1;
}

std::string KeyOf(std::int32_t index) {
  const std::string zstring = PXL_G_zref->entries[index].key;
  return zstring.substr(0, zstring.find('='));
}

// Quotes around a text keep its blanks.
std::string Unquoted(const std::string& text) {
  const bool quoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
  return quoted ? text.substr(1, text.size() - 2) : text;
}

std::string Filled(std::string text,
                   const std::vector<std::pair<std::string, std::string>>& values) {
  for (const auto& [placeholder, value] : values) {
    const std::size_t at = text.find(placeholder);
    if (at != std::string::npos) text.replace(at, placeholder.size(), value);
  }
  return text;
}

}  // namespace

// With the log at hand, and the default texts back in the end.
class Translated : public Whole {
 protected:
  Translated() { TRC_SetSink(Keep, &log_); }
  ~Translated() override {
    K_SetTranslation(nullptr, nullptr, 0);
    TRC_SetSink(nullptr, nullptr);
  }

  std::vector<std::string> log_;

 private:
  static void Keep(std::int32_t level, const char*, const char*, const char* text, void* context) {
    if (level >= TRC_Level_PROBLEM)
      static_cast<std::vector<std::string>*>(context)->push_back(text);
  }
};

TEST(ZStrings, AreThoseOfTheCatalogueAndThreeMore) {
  EXPECT_EQ(CountTexts(), 68);
  EXPECT_EQ(DefaultTexts().size(), 71U);
  for (std::int32_t i = 0; i < CountTexts(); ++i) EXPECT_TRUE(DefaultTexts().contains(KeyOf(i)));
  EXPECT_TRUE(DefaultTexts().contains("$$$/OV/PXL/MemoryLimitReached"));
  EXPECT_TRUE(DefaultTexts().contains("$$$/OV/PXL/CannotAllocateEnoughMemory"));
  EXPECT_TRUE(DefaultTexts().contains("$$$/ov/PXL_MemMappedFile/MapFailre"));
}

TEST(Placeholders, AreFoundInTheModulesTexts) {
  using testing::ElementsAre;
  EXPECT_THAT(PlaceholdersOf("%d x %5.1f%% ^^L1 @1 @@ @0"),
              ElementsAre("%d", "%5.1f", "%%", "@0", "@1", "^^L1"));
  const auto hasSome = [](const auto& text) { return !PlaceholdersOf(text.second).empty(); };
  EXPECT_EQ(std::ranges::count_if(DefaultTexts(), hasSome), 8);
}

// ---- The files --------------------------------------------------------------

class TranslationFile : public Translated, public ::testing::WithParamInterface<const char*> {
 protected:
  static std::string Path() { return PXL_TRANSLATIONS "/" + std::string(GetParam()) + ".txt"; }
};

TEST_P(TranslationFile, HasEveryKeyAndNoOther) {
  EXPECT_EQ(KeysOf(TranslationIn(Path())), KeysOf(DefaultTexts()));
}

TEST_P(TranslationFile, TranslatesEveryTextWithItsPlaceholders) {
  for (const auto& [key, translation] : TranslationIn(Path())) {
    const std::string& original = DefaultTexts().at(key);
    EXPECT_EQ(translation.empty(), original.empty()) << key;
    EXPECT_EQ(PlaceholdersOf(translation), PlaceholdersOf(original)) << key;
    EXPECT_TRUE(original.empty() || Unquoted(translation) != original) << key;
    const std::size_t address = std::min(original.find("https://"), original.size());
    EXPECT_THAT(translation, EndsWith(original.substr(address)));
  }
}

TEST_P(TranslationFile, IsTakenAsItStands) {
  char problem[256];
  ASSERT_EQ(K_SetTranslationFile(Path().c_str(), problem, sizeof problem), 1) << problem;
  const Texts texts = TranslationIn(Path());
  for (std::int32_t i = 0; i < CountTexts(); ++i) {
    EXPECT_EQ(Text(i), Unquoted(texts.at(KeyOf(i)))) << i;
  }
  EXPECT_THAT(log_, IsEmpty());
}

TEST_P(TranslationFile, IsFoundByItsLanguage) {
  ASSERT_EQ(K_SetLanguage(PXL_TRANSLATIONS, GetParam(), nullptr, 0), 1);
  EXPECT_EQ(Text(28), TranslationIn(Path()).at("$$$/OV/PXL/LStr/0028"));
}

TEST_P(TranslationFile, KeepsTheBlankAtTheEndOfAText) {
  ASSERT_EQ(K_SetTranslationFile(Path().c_str(), nullptr, 0), 1);
  EXPECT_THAT(Text(64), EndsWith(" "));
}

INSTANTIATE_TEST_SUITE_P(Languages, TranslationFile, ::testing::Values("de", "ja"),
                         [](const auto& tested) { return std::string(tested.param); });

// ---- The pseudo-locale ------------------------------------------------------

class PseudoLocaleInForce : public Translated {
 protected:
  PseudoLocaleInForce() {
    char problem[256];
    EXPECT_EQ(K_SetTranslation(PseudoLocale(DefaultTexts()).c_str(), problem, sizeof problem), 1)
        << problem;
  }
  ~PseudoLocaleInForce() override { EXPECT_THAT(log_, IsEmpty()); }

  static std::string Pseudo(const std::string& key) { return PseudoText(DefaultTexts().at(key)); }
  static std::string Pseudo(std::int32_t index) { return Pseudo(KeyOf(index)); }

  // The text of the one report there is.
  std::string Reported() const {
    return Reports().size() == 1 ? Reports()[0].text : "not one report";
  }
};

TEST_F(PseudoLocaleInForce, IsMadeOfTheDefaultTexts) {
  EXPECT_EQ(PseudoText(""), "");
  EXPECT_EQ(PseudoText("bad (%d) #{rsquo}"), "[b\u00E5\u010F (%d) #{rsquo}~~~~~~]");
}

TEST_F(PseudoLocaleInForce, TranslatesTheWholeCatalogue) {
  for (std::int32_t i = 0; i < CountTexts(); ++i) {
    const std::string expected = Filled(Pseudo(i), {{"#{rsquo}", "\u2019"}});
    EXPECT_EQ(Text(i), expected) << i;
  }
}

TEST_F(PseudoLocaleInForce, TranslatesWideTexts) {
  for (const auto& [key, text] : DefaultTexts()) {
    if (key.find("/LStr/") != std::string::npos) continue;
    const std::string zstring = std::string(key).append("=").append(text);
    const std::u16string wide = K_ZStringToUTF16String(zstring.c_str());
    EXPECT_EQ(vetrix::utility::UTF16to8(wide), PseudoText(text));
  }
}

TEST_F(PseudoLocaleInForce, TranslatesPlainReports) {
  PXL_WorldHandle worldH = Make(64, 1, 1);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(Reported(), Pseudo(52));
  Dispose(worldH);
}

TEST_F(PseudoLocaleInForce, TranslatesPrintFormats) {
  EXPECT_EQ(FailToMake(64, 32767, 1), PXL_Err_REFUSED);
  EXPECT_EQ(Reported(), Filled(Pseudo(29), {{"%d", "262144"}}));
}

TEST_F(PseudoLocaleInForce, TranslatesWhatTheErrorFollows) {
  QDE_FailNextCall(QDE_Call_NEW_GWORLD, QDE_Err_PARAMETER);
  EXPECT_EQ(FailToMake(32, 10, 10), QDE_Err_PARAMETER);
  EXPECT_EQ(Reported(), Pseudo(27) + " An argument of a drawing call is not legal (paramErr).");
}

TEST_F(PseudoLocaleInForce, TranslatesTheNameOfAHandle) {
  K_SetMemoryBudget(1);
  EXPECT_EQ(FailToMake(64, 1, 1), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Reported(), HasSubstr(Pseudo(2)));
}

TEST_F(PseudoLocaleInForce, TranslatesTheMemoryMessages) {
  K_SetMemoryBudget(1 << 20);
  EXPECT_EQ(FailToMake(128, 1920, 1080), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Reported(), Filled(Pseudo("$$$/OV/PXL/CannotAllocateEnoughMemory"),
                               {{"@0", "1920"}, {"@1", "1080"}, {"@@", "@"}, {"@2", "32"}}));
  ForgetReports();
  EXPECT_EQ(FailToMake(128, 32000, 32000), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Reported(),
            Filled(Pseudo("$$$/OV/PXL/MemoryLimitReached"),
                   {{"@0", "32000"}, {"@1", "32000"}, {"@@", "@"}, {"@2", "32"}, {"@3", "15.3"}}));
}
