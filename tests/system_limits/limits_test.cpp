// No descriptors, no address space, no memory left: each shortage is reported once
// and leaves existing Worlds unchanged; with the limit lifted, work goes on.
#include <gmock/gmock.h>

#include "tests/support/files/open_files.h"
#include "tests/support/system/variables.h"
#include "tests/system_limits/child.h"
#include "tests/system_limits/worlds.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr std::uint64_t kMiB = std::uint64_t{1} << 20;
constexpr std::int32_t kNoMemory = PXL_Err_NO_MEMORY;
constexpr int kSide = 512;  // 4 MiB at 128 bits
constexpr std::size_t kMost = 200;

// The limit that leaves so many descriptors, above which others may lie.
rlim_t LimitOfDescriptors(const std::set<int>& open, int left) {
  int limit = 0;
  for (; left > 0; ++limit) left -= open.contains(limit) ? 0 : 1;
  return static_cast<rlim_t>(limit);
}

class Limits : public testing::Test {
 protected:
  TemporaryFolder folder_;
  ScopedVariable variable_{"VETRIX_MAPPED_DIR", folder_.Path()};
};

// Frames until memory ends; then fewer, then more.
void ExpectShortageOfFrames(__rlimit_resource resource, std::uint64_t inUse) {
  const KeptReports reports(kReportsWithoutMemory);
  const LivingModule module;
  Pile pile(PXL_Depth_128, kSide, kInFrame);
  Limit(resource, inUse + 60 * kMiB);
  EXPECT_EQ(pile.AddUntilRefused(kMost), kNoMemory);
  EXPECT_GT(pile.Count(), 3U);
  EXPECT_LT(pile.Count(), 16U);
  EXPECT_EQ(reports.Count(), 1U);
  EXPECT_EQ(reports.Last().code, 0x70005U);
  EXPECT_THAT(reports.Last().text,
              StartsWith("Unable to allocate enough memory to render the current frame (512 x 512 "
                         "@ 32 bpc)."));
  EXPECT_TRUE(pile.AllHold());
  pile.DropOne();
  EXPECT_EQ(pile.Add(), 0);
  EXPECT_EQ(pile.Add(), kNoMemory);
  Lift(resource);
  EXPECT_EQ(pile.Add(), 0);
  EXPECT_TRUE(pile.AllHold());
}

}  // namespace

TEST_F(Limits, OfAddressSpaceAreAShortageOfFrames) {
  ExpectInChild([] { ExpectShortageOfFrames(RLIMIT_AS, AddressSpaceInUse()); });
}

TEST_F(Limits, OfPrivateMemoryAreAShortageOfFrames) {
  ExpectInChild([] { ExpectShortageOfFrames(RLIMIT_DATA, DataInUse()); });
}

TEST_F(Limits, OfMemoryAreToldForSmallWorldsToo) {
  ExpectInChild([] {
    KeptReports reports(kReportsWithoutMemory);
    const LivingModule module;
    Pile pile(PXL_Depth_32, 64, kInFrame);
    constexpr std::size_t kManySmall = 4000;
    Limit(RLIMIT_AS, AddressSpaceInUse() + 20 * kMiB);
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(pile.AddUntilRefused(kManySmall), kNoMemory);
      EXPECT_EQ(reports.Count(), 1U);
      EXPECT_THAT(reports.Last().text, HasSubstr("memory"));
      reports.Forget();
      EXPECT_TRUE(pile.AllHold());
      for (int k = 0; k < 100; ++k) pile.DropOne();
    }
    EXPECT_GT(pile.Count(), 300U);
    Lift(RLIMIT_AS);
    EXPECT_EQ(pile.Add(), 0);
  });
}

TEST_F(Limits, OfAddressSpaceKeepMappedWorldsOutAndTheirPixelsSafe) {
  ExpectInChild([] {
    KeptReports reports(kReportsWithoutMemory);
    const LivingModule module;
    Pile pile(PXL_Depth_128, kSide, kInMappedFile);
    ASSERT_EQ(pile.AddUntilRefused(3), 0);
    PXL_WorldHandle unlucky = nullptr;
    ASSERT_EQ(TryToMake(PXL_Depth_128, kSide, kSide, kInMappedFile, unlucky), PXL_Err_NONE);
    Limit(RLIMIT_AS, AddressSpaceInUse() + kMiB);
    EXPECT_NE(PXL_LockPixels(0, unlucky, nullptr), PXL_Err_NONE);
    EXPECT_EQ(reports.Count(), 1U);
    EXPECT_EQ(reports.Last().text, "Unable to map buffer into application memory.");
    Lift(RLIMIT_AS);
    // It counts as locked from now on, and can be disposed of.
    EXPECT_EQ(PXL_DisposeWorld(unlucky), PXL_Err_NONE);
    EXPECT_TRUE(pile.AllHold());
    EXPECT_EQ(pile.Add(), 0);
    EXPECT_EQ(reports.Count(), 1U);
  });
}

TEST_F(Limits, OfDescriptorsEndMappedWorldsOnly) {
  ExpectInChild([] {
    const std::set<int> before = OpenDescriptors();
    const KeptReports reports(kReportsWithoutMemory);
    {
      const LivingModule module;
      Pile mapped(PXL_Depth_64, 16, kInMappedFile);
      Limit(RLIMIT_NOFILE, LimitOfDescriptors(before, 5));
      EXPECT_NE(mapped.AddUntilRefused(kMost), 0);
      EXPECT_EQ(mapped.Count(), 5U);
      EXPECT_EQ(reports.Count(), 1U);
      EXPECT_THAT(reports.Last().text, HasSubstr("Too many open files"));
      EXPECT_TRUE(mapped.AllHold());
      Pile frames(PXL_Depth_64, 16, kInFrame);
      EXPECT_EQ(frames.AddUntilRefused(20), 0);
      EXPECT_TRUE(frames.AllHold());
      mapped.DropOne();
      EXPECT_EQ(mapped.Add(), 0);
      Lift(RLIMIT_NOFILE);
      EXPECT_EQ(mapped.Add(), 0);
      EXPECT_TRUE(mapped.AllHold());
    }
    EXPECT_EQ(OpenDescriptors(), before);
  });
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(Limits, OfFilesEndMappedWorldsThatAreLarger) {
  ExpectInChild([] {
    const KeptReports reports(kReportsWithoutMemory);
    const LivingModule module;
    Limit(RLIMIT_FSIZE, kMiB);
    Pile large(PXL_Depth_128, kSide, kInMappedFile);
    EXPECT_NE(large.AddUntilRefused(1), 0);
    EXPECT_EQ(reports.Count(), 1U);
    EXPECT_THAT(reports.Last().text, HasSubstr("exceed the limit on file sizes: File too large"));
    Pile small(PXL_Depth_128, kSide / 4, kInMappedFile);
    EXPECT_EQ(small.AddUntilRefused(10), 0);
    EXPECT_TRUE(small.AllHold());
    Lift(RLIMIT_FSIZE);
    EXPECT_EQ(large.AddUntilRefused(1), 0);
  });
  EXPECT_TRUE(folder_.IsEmpty());
}
