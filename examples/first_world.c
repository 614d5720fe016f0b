/* Fills a World of bytes, converts it into one of floats, prints a pixel. */
#include <stdio.h>

#include "PXL.h"

int main(void) {
  const Rect bounds = {0, 0, 1080, 1920}; /* top, left, bottom, right */
  PXL_WorldHandle bytes = NULL;
  PXL_WorldHandle floats = NULL;
  if (PXL_CheckVersions(0, PXL_InterfaceVersion) != 0) return 1;
  PXL_Birth(0);
  int32_t status = PXL_NewWorld(NULL, PXL_Flag_NO_PLATFORM, &bounds, PXL_Depth_32, 0, NULL, &bytes);
  if (status == 0) status = PXL_NewWorld(bytes, 0, NULL, PXL_Depth_128, 0, NULL, &floats);
  if (status == 0) status = PXL_LockPixels(0, bytes, NULL);
  if (status == 0) status = PXL_LockPixels(0, floats, NULL);
  if (status == 0) {
    PXL_ClearWorldToLong(bytes, 0x004080FF);
    PXL_Blit(bytes, floats, NULL, NULL, 0);
    const PXL_PixelF* pixel = (*floats)->pixels.baseAddr;
    for (int k = 0; k < 4; ++k) printf("%.3f\n", (double)pixel->channel[k]);
    PXL_UnlockPixels(floats);
    PXL_UnlockPixels(bytes);
  }
  if (floats != NULL) PXL_DisposeWorld(floats);
  if (bytes != NULL) PXL_DisposeWorld(bytes);
  PXL_Death();
  return status;
}
