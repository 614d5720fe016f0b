// Tests of the count of signals.
#include <gtest/gtest.h>

#include "K_host.h"

namespace {

TEST(Beep, IsCountedAndSilentWithoutATerminal) {
  const std::uint64_t before = K_CountBeeps();
  testing::internal::CaptureStderr();
  K_Beep();
  K_Beep();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(K_CountBeeps(), before + 2);
}

}  // namespace
