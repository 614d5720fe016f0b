/* A host in C11, linked with the shipped library: both headers come in either
 * order, functions and data are found under their plain names, and a World can
 * be made, locked, filled, read and disposed of. Gives the line that failed. */
#include <string.h>

#include "PXL.h"
#include "platform/K.h"
#include "platform/Q.h"
#include "platform/QDE.h"
#include "platform/TRC.h"
#include "platform/TXT.h"

#define REQUIRE(condition) \
  do {                     \
    if (!(condition)) {    \
      return __LINE__;     \
    }                      \
  } while (0)

static int UseAWorld(void) {
  const Rect rect = {0, 0, 3, 5};
  PXL_WorldHandle world = NULL;
  REQUIRE(PXL_NewWorld(NULL, PXL_Flag_NO_PLATFORM, &rect, PXL_Depth_32, 0, NULL, &world) == 0);
  REQUIRE(PXLp_G.worldCount == 1);
  REQUIRE((*world)->headMark == PXL_LiveMark && (*world)->tailMark == PXL_LiveMark);
  REQUIRE(PXL_LockPixels(0, world, NULL) == PXL_Err_NONE);
  REQUIRE(PXL_ClearWorldToLong(world, 0x04030201) == PXL_Err_NONE);
  const PXL_Pixel8* pixel = PXLp_GetPixBaseAddr(world);
  REQUIRE(pixel == (*world)->pixels.baseAddr);
  REQUIRE(pixel->channel[0] == 1 && pixel->channel[3] == 4);
  PXL_UnlockPixels(world);
  REQUIRE(PXL_DisposeWorld(world) == PXL_Err_NONE);
  return 0;
}

static int LookUpAMessage(void) {
  REQUIRE(PXL_G_zref->count == 69);
  const char* text = K_ZLookupLStrCache(PXL_G_zref, 51, 0, 0);
  REQUIRE(strcmp(text, "rebirth.") == 0);
  return 0;
}

int main(void) {
  REQUIRE(PXL_CheckVersions(0x70001, PXL_InterfaceVersion) == 0);
  REQUIRE(PXLp_G.bornMark == 0);
  REQUIRE(PXL_Birth(42) == 0);
  REQUIRE(PXLp_G.bornMark == PXL_LiveMark && PXLp_G.birthArg == 42);
  const int line = UseAWorld() + LookUpAMessage();
  REQUIRE(PXL_Death() == 0);
  return line;
}
