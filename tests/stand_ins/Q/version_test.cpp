// Tests of the version check of Q.
#include <gtest/gtest.h>

#include "Q_host.h"

namespace {

TEST(Version, IsThatOfTheHeader) {
  EXPECT_EQ(Q_HeaderVersion(), 18);
}

TEST(Version, MatchesItsOwnHeaderSilently) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Q_CheckVersions(0x70001, 18), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Version, ReportsAMismatchInOneLineAndReturns7) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Q_CheckVersions(0x70001, 17), 7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "0x70001: Q is version 18, its caller expects 17\n");
}

}  // namespace
