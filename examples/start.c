/* The life of the module: versions, birth, death. Prints the package version. */
#include <stdio.h>

#include "PXL.h"

/* The host's own module number and place, under which a mismatch is reported. */
enum { HostCode = 0x10001 };

int main(void) {
  /* Is this library what the header was made for, and are its imports? */
  if (PXL_CheckVersions(HostCode, PXL_InterfaceVersion) != PXL_Err_NONE) return 1;

  const uint32_t version = PXL_PkgObjectVersion();
  printf("%u.%u\n", (unsigned)(version >> 16), (unsigned)(version & 0xFFFF));

  PXL_Birth(0);
  const int alive = PXLp_G.bornMark == PXL_LiveMark;
  /* ... everything else ... */
  return PXL_Death() == PXL_Err_NONE && alive ? 0 : 1;
}
