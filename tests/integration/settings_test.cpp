// The settings are read once a process, so this is a program of its own.
#include "tests/support/host/whole.h"
#include "vetrix_host.h"

class Settings : public Whole {};

TEST_F(Settings, SendAllFramesToTheHeapWhenThePoolIsOff) {
  ASSERT_TRUE(vetrix::host::LoadSettingsText("VirtualAllocFrames = false\n"));
  PXL_WorldHandle worldH = Make(128, 640, 480);
  ASSERT_NE(worldH, nullptr);
  EXPECT_FALSE(K_IsRecycledPtr(Record(worldH).pixels.frame));
  // Later changes come too late.
  ASSERT_TRUE(vetrix::host::LoadSettingsText("VirtualAllocFrames = true\n"));
  PXL_WorldHandle later = Make(128, 640, 480);
  EXPECT_FALSE(K_IsRecycledPtr(Record(later).pixels.frame));
  Dispose(later);
  Dispose(worldH);
}
