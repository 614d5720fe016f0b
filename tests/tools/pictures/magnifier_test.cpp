// The factor that makes differences visible.
#include "tools/pxl/pictures/magnifier.h"

#include <gtest/gtest.h>

#include <limits>

using pxl::MagnifierFor;

TEST(Magnifier, IsARoundNumberThatTakesTheChangeToFullScaleAtMost) {
  EXPECT_DOUBLE_EQ(MagnifierFor(1.0), 1.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.51), 1.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.5), 2.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.21), 2.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.2), 5.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.11), 5.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(0.1), 10.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(1.5e-5), 50000.0);
  EXPECT_DOUBLE_EQ(MagnifierFor(1.01), 0.5);
  EXPECT_DOUBLE_EQ(MagnifierFor(3.0), 0.2);
}

TEST(Magnifier, ShowsTheLargestChangeInMoreThanAThirdOfTheScale) {
  for (double change = std::numeric_limits<float>::denorm_min();
       change < std::numeric_limits<float>::max(); change *= 1.37) {
    const double shown = change * MagnifierFor(change);
    ASSERT_GT(shown, 1.0 / 3.0) << change;
    ASSERT_LE(shown, 1.0) << change;
  }
}

TEST(Magnifier, LeavesAloneWhatHasNoSize) {
  EXPECT_EQ(MagnifierFor(0.0), 1.0);
  EXPECT_EQ(MagnifierFor(std::numeric_limits<double>::infinity()), 1.0);
}
