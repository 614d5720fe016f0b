/* A World whose pixels are a file that is mapped while they are locked. Prints
 * a channel that was written under an earlier lock. */
#include <stdio.h>

#include "PXL.h"

/* A World with a provider has no pixels.baseAddr, locked or not. */
static PXL_PixelF* Pixels(PXL_WorldHandle world) {
  return PXLp_GetPixBaseAddr(world);
}

static int32_t WriteAndRead(PXL_WorldHandle world) {
  int32_t status = PXL_LockPixels(0, world, NULL);
  if (status == PXL_Err_NONE) Pixels(world)->channel[2] = 0.25F;
  PXL_UnlockPixels(world); /* unmapped: no address space is taken meanwhile */
  if (status != PXL_Err_NONE) return status;

  status = PXL_LockPixels(0, world, NULL);
  if (status == PXL_Err_NONE) printf("%.2f\n", (double)Pixels(world)->channel[2]);
  PXL_UnlockPixels(world);
  return status;
}

int main(void) {
  PXL_Birth(0);
  const Rect bounds = {0, 0, 4320, 7680};
  PXL_WorldHandle world = NULL;
  int32_t status = PXL_NewWorld(NULL, PXL_Flag_DEFERRED | PXL_Flag_MAPPED, &bounds, PXL_Depth_128,
                                0, NULL, &world);
  if (status == PXL_Err_NONE) {
    status = WriteAndRead(world);
    PXL_DisposeWorld(world); /* the file is gone with it */
  }
  PXL_Death();
  return status;
}
