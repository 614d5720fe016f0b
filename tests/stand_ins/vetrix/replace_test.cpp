// Tests of the replacement of @0 to @9.
#include <gtest/gtest.h>

#include <string>

#include "platform/vetrix.h"

namespace {

std::u16string Replace(const std::u16string& text) {
  return vetrix::utility::ReplaceInString(text, u"zero", u"one", u"@0", u"@@", u"", u"five", u"six",
                                          u"seven", u"eight", u"nine");
}

TEST(ReplaceInString, PutsTheTextsInPlace) {
  EXPECT_EQ(Replace(u"@0 x @1 (@9)"), u"zero x one (nine)");
  EXPECT_EQ(Replace(u"@5@6@7@8"), u"fivesixseveneight");
}

TEST(ReplaceInString, MakesOneAtOfTwo) {
  EXPECT_EQ(Replace(u"@0 @@ @1"), u"zero @ one");
  EXPECT_EQ(Replace(u"@@0"), u"@0");
  EXPECT_EQ(Replace(u"@@@0"), u"@zero");
}

TEST(ReplaceInString, DoesNotLookAgainAtWhatItPutIn) {
  EXPECT_EQ(Replace(u"@2"), u"@0");
  EXPECT_EQ(Replace(u"@3"), u"@@");
  EXPECT_EQ(Replace(u"@20"), u"@00");
}

TEST(ReplaceInString, KeepsALoneAt) {
  EXPECT_EQ(Replace(u"a@b"), u"a@b");
  EXPECT_EQ(Replace(u"@"), u"@");
  EXPECT_EQ(Replace(u"end @"), u"end @");
}

TEST(ReplaceInString, TakesEmptyTexts) {
  EXPECT_EQ(Replace(u""), u"");
  EXPECT_EQ(Replace(u"[@4]"), u"[]");
}

}  // namespace
