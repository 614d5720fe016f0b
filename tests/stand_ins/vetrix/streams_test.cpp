// Tests of the UTF-16 string streams.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <locale>
#include <string>

#include "platform/vetrix.h"

namespace {

using vetrix::iUTF16StringStream;
using vetrix::oUTF16StringStream;

// The result of reading one value.
template <typename T>
struct Reading {
  T value;
  bool failed;
  bool operator==(const Reading&) const = default;
};

Reading<std::int32_t> ReadInteger(const std::u16string& text) {
  iUTF16StringStream stream(text);
  std::int32_t value = 0;
  stream >> value;
  EXPECT_FALSE(stream.bad());
  return {value, stream.fail()};
}

Reading<bool> ReadBoolean(const std::u16string& text, bool words) {
  iUTF16StringStream stream(text);
  if (words) stream.boolalpha();
  bool value = false;
  stream >> value;
  EXPECT_FALSE(stream.bad());
  return {value, stream.fail()};
}

Reading<bool> ReadWord(const std::u16string& text) {
  return ReadBoolean(text, true);
}

using Integer = Reading<std::int32_t>;
using Boolean = Reading<bool>;

TEST(InputStream, ReadsDecimalIntegers) {
  EXPECT_EQ(ReadInteger(u"300"), (Integer{300, false}));
  EXPECT_EQ(ReadInteger(u"-17"), (Integer{-17, false}));
  EXPECT_EQ(ReadInteger(u"2147483647"), (Integer{2147483647, false}));
  EXPECT_EQ(ReadInteger(u"-2147483648"),
            (Integer{std::numeric_limits<std::int32_t>::min(), false}));
}

TEST(InputStream, SkipsLeadingBlanksAndIgnoresWhatFollows) {
  EXPECT_EQ(ReadInteger(u" \t\n300abc"), (Integer{300, false}));
  EXPECT_EQ(ReadInteger(u"12 34"), (Integer{12, false}));
  EXPECT_EQ(ReadInteger(u"1.9"), (Integer{1, false}));
}

TEST(InputStream, FailsOnWhatIsNoInteger) {
  EXPECT_EQ(ReadInteger(u"abc"), (Integer{0, true}));
  EXPECT_EQ(ReadInteger(u""), (Integer{0, true}));
  EXPECT_EQ(ReadInteger(u"\u0663"), (Integer{0, true}));
}

TEST(InputStream, FailsOnOverflow) {
  EXPECT_TRUE(ReadInteger(u"99999999999").failed);
  EXPECT_TRUE(ReadInteger(u"2147483648").failed);
  EXPECT_TRUE(ReadInteger(u"-2147483649").failed);
}

TEST(InputStream, ReadsTheWordsOfBooleansOnceSwitched) {
  EXPECT_EQ(ReadWord(u"true"), (Boolean{true, false}));
  EXPECT_EQ(ReadWord(u" true"), (Boolean{true, false}));
  EXPECT_EQ(ReadWord(u"false"), (Boolean{false, false}));
  EXPECT_EQ(ReadWord(u"true story"), (Boolean{true, false}));
}

TEST(InputStream, FailsOnOtherSpellingsOfBooleans) {
  for (const char16_t* text : {u"1", u"0", u"TRUE", u"yes", u"tru", u""}) {
    EXPECT_EQ(ReadWord(text), (Boolean{false, true}));
  }
}

TEST(InputStream, ReadsBooleansAsNumbersUntilSwitched) {
  EXPECT_EQ(ReadBoolean(u"1", false), (Boolean{true, false}));
  EXPECT_EQ(ReadBoolean(u"0", false), (Boolean{false, false}));
  EXPECT_TRUE(ReadBoolean(u"true", false).failed);
}

TEST(InputStream, ReadsOneValueAfterTheOther) {
  iUTF16StringStream stream(u"1 2");
  std::int32_t first = 0;
  std::int32_t second = 0;
  stream >> first >> second;
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  EXPECT_FALSE(stream.fail());
}

TEST(OutputStream, WritesIntegersInDecimal) {
  oUTF16StringStream stream;
  stream << std::int32_t{-2147483647} << std::int32_t{300};
  EXPECT_EQ(stream.str(), u"-2147483647300");
  EXPECT_FALSE(stream.fail());
  EXPECT_FALSE(stream.bad());
}

TEST(OutputStream, WritesBooleansAsNumbersUntilSwitched) {
  oUTF16StringStream stream;
  stream << true;
  stream.boolalpha();
  stream << true << false;
  EXPECT_EQ(stream.str(), u"1truefalse");
}

// A locale that groups digits and has its own words for booleans.
class Strange : public std::numpunct<char> {
  std::string do_grouping() const override { return "\1"; }
  char do_thousands_sep() const override { return '\''; }
  std::string do_truename() const override { return "ja"; }
};

TEST(Streams, KnowNoLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale(), new Strange));
  oUTF16StringStream out;
  out.boolalpha();
  out << std::int32_t{1234567} << true;
  const Integer integer = ReadInteger(u"1234567");
  const Boolean word = ReadWord(u"true");
  std::locale::global(before);
  EXPECT_EQ(out.str(), u"1234567true");
  EXPECT_EQ(integer, (Integer{1234567, false}));
  EXPECT_EQ(word, (Boolean{true, false}));
}

}  // namespace
