#include <cstring>

#include "tests/whole/whole.h"

class MappedWorlds : public Whole {
 protected:
  static K_MemoryTotals Totals() {
    K_MemoryTotals totals;
    K_GetMemoryTotals(&totals);
    return totals;
  }
};

TEST_F(MappedWorlds, KeepTheirPixelsWhileNobodyHasThemMapped) {
  const K_MemoryTotals before = Totals();
  PXL_WorldHandle worldH = Make(128, 300, 200, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  ASSERT_NE(worldH, nullptr);
  const auto size = static_cast<std::int64_t>(Record(worldH).pixels.frameSize);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_EQ(Totals().system, before.system + size);

  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), 0);
  EXPECT_EQ(Totals().system, before.system);
  EXPECT_EQ(Totals().application, before.application + size);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  PixelAt<PXL_PixelF>(worldH, 299, 199) = {{1.0F, 0.5F, 0.25F, 0.125F}};
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_EQ(Totals().application, before.application);

  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), 0);
  EXPECT_EQ(PixelAt<PXL_PixelF>(worldH, 299, 199).channel[3], 0.125F);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  EXPECT_EQ(Totals().system, before.system);
}
