// The public header in C++17, and the data that the library exports.
#include "PXL.h"

int main() {
  if (PXL_Birth(1) != PXL_Err_NONE || PXLp_G.bornMark != PXL_LiveMark) return 1;
  if (PXL_G_zref == nullptr) return 2;
  const PXL_PixelF half{{0.5F, 0.5F, 0.5F, 0.5F}};
  PXL_Pixel8 pixel{};
  PXL_PixelFto8(&half, &pixel);
  if (pixel.channel[0] != 128) return 3;
  return PXL_Death() == PXL_Err_NONE && PXLp_G.bornMark == 0 ? 0 : 4;
}
