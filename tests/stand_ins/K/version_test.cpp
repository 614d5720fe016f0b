// Tests of the version check of K.
#include <gtest/gtest.h>

#include "tests/support/host/kept_reports.h"

namespace {

TEST(Version, IsThatOfTheHeader) {
  EXPECT_EQ(K_HeaderVersion(), 61);
}

TEST(Version, MatchesItsOwnHeaderSilently) {
  KeptReports reports;
  EXPECT_EQ(K_CheckVersions(0x70001, 61), 0);
  EXPECT_TRUE(reports.Take().empty());
}

TEST(Version, ReportsAMismatchUnderTheCallersCodeAndReturns7) {
  KeptReports reports;
  EXPECT_EQ(K_CheckVersions(0x70001, 60), 7);
  const Reports expected = {{0x70001, 16, 7, "K is version 61, its caller expects 60"}};
  EXPECT_EQ(reports.Take(), expected);
}

}  // namespace
