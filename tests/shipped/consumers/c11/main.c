/* Widens a World of bytes to floats and narrows it again. Prints "good". */
#include <stdio.h>
#include <string.h>

#include "PXL.h"

static int RoundTrip(PXL_WorldHandle bytes, PXL_WorldHandle floats) {
  const int32_t value = 0x01804020;
  if (PXL_LockPixels(0, bytes, NULL) != 0 || PXL_LockPixels(0, floats, NULL) != 0) return 1;
  if (PXL_ClearWorldToLong(bytes, value) != 0) return 2;
  if (PXL_Blit(bytes, floats, NULL, NULL, 0) != 0) return 3;
  if (PXL_ClearWorldToZeros(bytes) != 0) return 4;
  if (PXL_Blit(floats, bytes, NULL, NULL, 0) != 0) return 5;
  const PXL_PixelF* pixel = (*floats)->pixels.baseAddr;
  if (pixel->channel[3] <= 0.0039F || pixel->channel[3] >= 0.004F) return 6;
  int32_t back = 0;
  memcpy(&back, (*bytes)->pixels.baseAddr, sizeof back);
  PXL_UnlockPixels(floats);
  PXL_UnlockPixels(bytes);
  return back == value ? 0 : 7;
}

static int UseWorlds(void) {
  const Rect bounds = {0, 0, 270, 481};
  PXL_WorldHandle bytes = NULL;
  PXL_WorldHandle floats = NULL;
  if (PXL_NewWorld(NULL, PXL_Flag_NO_PLATFORM, &bounds, PXL_Depth_32, 0, NULL, &bytes) != 0) {
    return 11;
  }
  if (PXL_NewWorld(bytes, 0, NULL, PXL_Depth_128, 0, NULL, &floats) != 0) return 12;
  const int failure = RoundTrip(bytes, floats);
  if (PXL_DisposeWorld(floats) != 0 || PXL_DisposeWorld(bytes) != 0) return 13;
  return failure;
}

int main(void) {
  if (PXL_CheckVersions(0, PXL_InterfaceVersion) != 0 || PXL_Birth(0) != 0) return 21;
  const int failure = UseWorlds();
  if (PXLp_G.worldCount != 0 || PXL_Death() != 0) return 22;
  if (failure == 0) puts("good");
  return failure;
}
