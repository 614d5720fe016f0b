// The tick count.
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "QDE_host.h"

namespace {

TEST(TickCount, GoesForwardAtSixtyASecond) {
  using std::chrono::steady_clock;
  const auto start = steady_clock::now();
  const std::uint32_t first = TickCount();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
  const std::uint32_t last = TickCount();
  const auto elapsed = std::chrono::duration<double>(steady_clock::now() - start).count();
  // Six ticks lie within the pause wherever it began, and no more than the
  // whole time and one more may have been counted.
  EXPECT_GE(last - first, 6U);
  EXPECT_LE(last - first, elapsed * 60 + 1);
}

}  // namespace
