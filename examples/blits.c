/* The two ways of PXL_Blit: surfaces with a transfer mode, and whole Worlds of
 * which one is deep. Prints a pixel of each. */
#include <stdio.h>

#include "PXL.h"

enum { AddOver = 10, Width = 16, Height = 9 };

static PXL_WorldHandle NewLocked(int32_t depth, int32_t fill) {
  const Rect bounds = {0, 0, Height, Width};
  PXL_WorldHandle world = NULL;
  if (PXL_NewWorld(NULL, 0, &bounds, depth, 0, NULL, &world) != PXL_Err_NONE) return NULL;
  PXL_LockPixels(0, world, NULL);
  PXL_ClearWorldToLong(world, fill);
  return world;
}

static void Dispose(PXL_WorldHandle world) {
  if (world == NULL) return;
  PXL_UnlockPixels(world);
  PXL_DisposeWorld(world);
}

/* Adds half of a surface to a part of another one; sizes may differ. */
static void DrawSum(PXL_WorldHandle from, PXL_WorldHandle to) {
  const Rect source = {0, 0, Height, Width / 2};
  const Rect destination = {0, 0, Height, Width};
  PXL_Blit(from, to, &source, &destination, AddOver);
  const PXL_Pixel8* pixel = PXLp_GetPixBaseAddr(to);
  printf("sum: %d\n", pixel->channel[1]);
}

/* Sizes must be equal; rectangles and mode are not looked at. */
static int32_t Widen(PXL_WorldHandle from, PXL_WorldHandle to) {
  const int32_t status = PXL_Blit(from, to, NULL, NULL, 0);
  const PXL_Pixel16* pixel = PXLp_GetPixBaseAddr(to);
  printf("wide: %d of 32768\n", pixel->channel[1]);
  return status;
}

int main(void) {
  PXL_Birth(0);
  PXL_WorldHandle first = NewLocked(PXL_Depth_32, 0x00202000);
  PXL_WorldHandle second = NewLocked(PXL_Depth_32, 0x00404000);
  PXL_WorldHandle deep = NewLocked(PXL_Depth_64, 0);
  int32_t status = PXL_Err_FAILED;
  if (first != NULL && second != NULL && deep != NULL) {
    DrawSum(first, second);
    status = Widen(second, deep);
  }
  Dispose(deep);
  Dispose(second);
  Dispose(first);
  PXL_Death();
  return status;
}
