/* A surface whose pixels may be purged while nobody holds them. Prints what the
 * lock finds. */
#include <stdio.h>

#include "K_host.h"
#include "PXL.h"

static void Draw(PXL_WorldHandle world) {
  PXL_ClearWorldToLong(world, 0x00336699);
}

static int32_t ShowPixels(PXL_WorldHandle world) {
  uint8_t loaded = 0;
  uint8_t reloaded = 0;
  const int32_t status = PXL_LoadLockPixels(0, world, &loaded, &reloaded);
  if (status != PXL_Err_NONE) return status;
  if (loaded == 0) return PXL_Err_NO_MEMORY; /* not locked, and reported */
  if (reloaded != 0) Draw(world);            /* purged and made anew, unset */
  puts(reloaded != 0 ? "redrawn" : "as they were");
  PXL_UnlockPixels(world);
  return PXL_Err_NONE;
}

int main(void) {
  PXL_Birth(0);
  const Rect bounds = {0, 0, 64, 64};
  PXL_WorldHandle world = NULL;
  int32_t status = PXL_NewWorld(NULL, PXL_Flag_PURGEABLE | PXL_Flag_CLEAR, &bounds, PXL_Depth_32, 0,
                                NULL, &world);
  if (status == PXL_Err_NONE) {
    status = ShowPixels(world);
    K_PurgeHandlesAndCompact(); /* what memory pressure would do */
    if (status == PXL_Err_NONE) status = ShowPixels(world);
    PXL_DisposeWorld(world);
  }
  PXL_Death();
  return status;
}
