/* Makes a World and one like it, re-sizes that, disposes of both. Prints the
 * sizes and the depths. */
#include <stdio.h>

#include "PXL.h"

/* The record moves whenever the module is called: it is read through the handle
 * each time, and no pointer to it is kept. */
static void Print(PXL_WorldHandle world) {
  printf("%d x %d, %d bits\n", (*world)->width, (*world)->height, (*world)->depth);
}

static int32_t Use(PXL_WorldHandle first) {
  /* Without rectangle and depth of its own it takes those of its parent. */
  PXL_WorldHandle second = NULL;
  int32_t status = PXL_NewWorld(first, 0, NULL, PXL_Depth_SHARE, 0, NULL, &second);
  if (status != PXL_Err_NONE) return status;

  const Rect half = {0, 0, 540, 960};
  status = PXL_UpdateWorld(0, &half, 0, NULL, second); /* the pixels are unset now */
  Print(first);
  Print(second);
  PXL_DisposeWorld(second);
  return status;
}

int main(void) {
  PXL_Birth(0);
  const Rect bounds = {0, 0, 1080, 1920}; /* top, left, bottom, right */
  PXL_WorldHandle world = NULL;
  int32_t status = PXL_NewWorld(NULL, PXL_Flag_CLEAR, &bounds, PXL_Depth_64, 0, NULL, &world);
  if (status == PXL_Err_NONE) {
    status = Use(world);
    PXL_DisposeWorld(world);
  }
  PXL_Death();
  return status;
}
