// Worlds in mapped files.
#include <cstring>
#include <filesystem>

#include "tests/support/files/open_files.h"
#include "tests/support/host/whole.h"
#include "tests/support/system/variables.h"

class MappedWorlds : public Whole {};

TEST_F(MappedWorlds, KeepTheirPixelsWhileNobodyHasThemMapped) {
  const Holdings before = CurrentHoldings();
  PXL_WorldHandle worldH = Make(128, 300, 200, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  ASSERT_NE(worldH, nullptr);
  const auto size = static_cast<std::int64_t>(Record(worldH).pixels.frameSize);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_EQ(CurrentHoldings().systemBytes, before.systemBytes + size);

  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(CurrentHoldings().systemBytes, before.systemBytes);
  EXPECT_EQ(CurrentHoldings().applicationBytes, before.applicationBytes + size);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  PixelAt<PXL_PixelF>(worldH, 299, 199) = {{1.0F, 0.5F, 0.25F, 0.125F}};
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_EQ(CurrentHoldings().applicationBytes, before.applicationBytes);

  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PixelAt<PXL_PixelF>(worldH, 299, 199).channel[3], 0.125F);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  EXPECT_EQ(CurrentHoldings().systemBytes, before.systemBytes);
}

TEST_F(MappedWorlds, LeaveNoDescriptorBehind) {
  // In memory where there is such a folder: disks take their time.
  const bool memory = std::filesystem::is_directory("/dev/shm");
  const ScopedVariable folder("VETRIX_MAPPED_DIR", memory ? "/dev/shm" : "");
  const std::set<int> before = OpenDescriptors();
  for (int i = 0; i < 10000; ++i) {
    PXL_WorldHandle worldH = Make(64, 3, 2, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
    ASSERT_NE(worldH, nullptr);
    ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
    PXL_UnlockPixels(worldH);
    Dispose(worldH);
  }
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(MappedWorlds, NeedTheirFolder) {
  const ScopedVariable nowhere("VETRIX_MAPPED_DIR", "/no/such/folder");
  EXPECT_NE(FailToMake(128, 30, 20, PXL_Flag_DEFERRED | PXL_Flag_MAPPED), PXL_Err_NONE);
}
