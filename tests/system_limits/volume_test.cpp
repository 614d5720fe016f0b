// A volume for mapped files that is full.
#include <gmock/gmock.h>
#include <sys/statvfs.h>

#include "tests/support/files/open_files.h"
#include "tests/support/files/small_volume.h"
#include "tests/support/system/variables.h"
#include "tests/system_limits/child.h"
#include "tests/system_limits/worlds.h"

using testing::HasSubstr;

namespace {

constexpr std::uint64_t kVolume = std::uint64_t{1} << 20;
constexpr int kSide = 100;  // 160000 bytes at 128 bits

std::uint64_t FreeBytes(const std::string& folder) {
  struct statvfs status = {};
  EXPECT_EQ(statvfs(folder.c_str(), &status), 0);
  return status.f_bfree * status.f_frsize;
}

void ExpectShortageOfSpace(const std::string& folder) {
  ASSERT_TRUE(MountVolume(folder, Volume::Writable, kVolume));
  const std::uint64_t free = FreeBytes(folder);
  const KeptReports reports(kReportsWithoutMemory);
  {
    const LivingModule module;
    Pile pile(PXL_Depth_128, kSide, kInMappedFile);
    EXPECT_NE(pile.AddUntilRefused(100), 0);
    EXPECT_EQ(pile.Count(), 6U);
    EXPECT_EQ(reports.Count(), 1U);
    EXPECT_THAT(reports.Last().text, HasSubstr("cannot reserve 160020 bytes for a mapped file: "
                                               "No space left on device"));
    EXPECT_TRUE(pile.AllHold());
    pile.DropOne();
    EXPECT_EQ(pile.Add(), 0);
    EXPECT_NE(pile.Add(), 0);
    EXPECT_TRUE(pile.AllHold());
  }
  EXPECT_EQ(FreeBytes(folder), free);
}

}  // namespace

TEST(FullVolume, EndsMappedWorldsAndLosesNothing) {
  if (!CanMountVolumes()) GTEST_SKIP() << "no volume can be mounted here";
  const TemporaryFolder folder;
  const ScopedVariable variable("VETRIX_MAPPED_DIR", folder.Path());
  ExpectInChild([&folder] { ExpectShortageOfSpace(folder.Path()); });
  EXPECT_TRUE(folder.IsEmpty());
}
