// Tests of the version check of TXT.
#include <gtest/gtest.h>

#include "TXT_host.h"

namespace {

TEST(Version, IsThatOfTheHeader) {
  EXPECT_EQ(TXT_HeaderVersion(), 3);
}

TEST(Version, MatchesItsOwnHeaderSilently) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(TXT_CheckVersions(0x70001, 3), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Version, ReportsAMismatchInOneLineAndReturns7) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(TXT_CheckVersions(0x70001, 4), 7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "0x70001: TXT is version 3, its caller expects 4\n");
}

}  // namespace
