// Growth of the use of a process, distinguished from variation.
#include "tools/pxl/system/growth.h"

#include <gmock/gmock.h>

#include <sstream>

#include "tests/support/system/system_features.h"

using pxl::FindGrowth;
using pxl::ProcessUse;
using testing::Optional;

namespace {

constexpr std::uint64_t kMiB = 1024 * 1024;

using Number = std::uint64_t ProcessUse::*;

// Samples of a process in which one number changes.
std::vector<ProcessUse> Samples(Number number, const std::vector<std::uint64_t>& values) {
  std::vector<ProcessUse> samples(values.size(), ProcessUse{kMiB, 90 * kMiB, 40 * kMiB, 5});
  for (std::size_t i = 0; i < values.size(); ++i) samples[i].*number = values[i];
  return samples;
}

}  // namespace

TEST(Growth, IsFoundInEachNumber) {
  EXPECT_THAT(FindGrowth(Samples(&ProcessUse::handles, {5, 5, 5, 5, 6, 6, 6, 6})),
              Optional(std::string("open handles grow: 5 and then 6")));
  EXPECT_THAT(FindGrowth(Samples(&ProcessUse::heap, {100, 200, 300000, 300000})),
              Optional(std::string("heap bytes grow: 200 and then 300000")));
  EXPECT_TRUE(FindGrowth(Samples(&ProcessUse::addresses, {0, 0, 4 * kMiB, 4 * kMiB + 1})));
  EXPECT_TRUE(FindGrowth(Samples(&ProcessUse::resident, {kMiB, 0, 22 * kMiB, 22 * kMiB})));
}

TEST(Growth, IsNotWhatIsAllowed) {
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::heap, {0, 0, 0, 256 * 1024})));
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::addresses, {0, 0, 0, 4 * kMiB})));
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::resident, {0, 0, 0, 20 * kMiB})));
}

TEST(Growth, IsNotWhatWarmsUp) {
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::handles, {2, 3, 4, 5, 5, 5, 5, 5})));
}

TEST(Growth, IsNotWhatFallsAgain) {
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::handles, {5, 5, 5, 5, 9, 9, 9, 5})));
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::handles, {5, 5, 5, 5, 9, 9, 5, 9})));
}

TEST(Growth, NeedsSomeSamples) {
  EXPECT_FALSE(FindGrowth({}));
  EXPECT_FALSE(FindGrowth(Samples(&ProcessUse::handles, {5, 6, 7})));
}

TEST(ProcessUseLines, ShowBothEnds) {
  std::ostringstream out;
  pxl::PrintProcessUse(out, Samples(&ProcessUse::handles, {5, 6, 7}));
  EXPECT_EQ(out.str(),
            "  heap bytes          1048576 -> 1048576\n"
            "  address bytes       94371840 -> 94371840\n"
            "  resident bytes      41943040 -> 41943040\n"
            "  open handles        5 -> 7\n");
}

TEST(ProcessUse, ChangesWithWhatIsHeld) {
  if (!HasProcessFiles()) GTEST_SKIP() << "/proc is not mounted";
  const ProcessUse before = pxl::ReadProcessUse();
  const std::vector<char> memory(64 * kMiB, 'x');
  const ProcessUse after = pxl::ReadProcessUse();
  EXPECT_GE(after.addresses, before.addresses + 60 * kMiB);
  EXPECT_GE(after.resident, before.resident + 60 * kMiB);
  EXPECT_EQ(after.handles, before.handles);
  EXPECT_EQ(memory.back(), 'x');
}
