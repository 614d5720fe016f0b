// Tests of numbers as text.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "platform/vetrix.h"

namespace {

using vetrix::utility::NumberFlags;
using vetrix::utility::NumberToString;

std::u16string Real(double value, int minDigits, int maxDigits) {
  return NumberToString(value, minDigits, maxDigits, NumberFlags::Empty, 31);
}

TEST(NumberToString, WritesIntegersInDecimal) {
  EXPECT_EQ(NumberToString(std::int32_t{0}), u"0");
  EXPECT_EQ(NumberToString(std::int32_t{4096}), u"4096");
  EXPECT_EQ(NumberToString(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

TEST(NumberToString, WritesOneDigitAfterThePoint) {
  EXPECT_EQ(Real(3.0, 1, 1), u"3.0");
  EXPECT_EQ(Real(2.04, 1, 1), u"2.0");
  EXPECT_EQ(Real(-1.5, 1, 1), u"-1.5");
  EXPECT_EQ(Real(8589934591.9, 1, 1), u"8589934591.9");
}

TEST(NumberToString, RoundsTheExactValue) {
  EXPECT_EQ(Real(0.96, 1, 1), u"1.0");
  EXPECT_EQ(Real(2.05, 1, 1), u"2.0");  // the double is just below 2.05
  EXPECT_EQ(Real(0.15, 1, 1), u"0.1");  // just below
  EXPECT_EQ(Real(0.35, 1, 1), u"0.3");  // just below
  EXPECT_EQ(Real(0.45, 1, 1), u"0.5");  // just above
  EXPECT_EQ(Real(0.25, 1, 1), u"0.2");  // a tie goes to the even digit
  EXPECT_EQ(Real(0.75, 1, 1), u"0.8");
}

TEST(NumberToString, DropsZerosDownToTheLeastDigits) {
  EXPECT_EQ(Real(1.5, 0, 4), u"1.5");
  EXPECT_EQ(Real(1.5, 3, 4), u"1.500");
  EXPECT_EQ(Real(1.25, 1, 4), u"1.25");
  EXPECT_EQ(Real(100.0, 0, 4), u"100");
  EXPECT_EQ(Real(100.0, 0, 0), u"100");
}

TEST(NumberToString, TakesOddNumbersOfDigits) {
  EXPECT_EQ(Real(1.25, 2, 1), u"1.25");
  EXPECT_EQ(Real(1.25, -3, -1), u"1");
  EXPECT_EQ(Real(std::numeric_limits<double>::max(), 1000, 1000).size(), 309U + 1 + 100);
}

}  // namespace
