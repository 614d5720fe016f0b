// The address of the first pixel.
#include "world/record/base_address.h"

#include "platform/QDE.h"
#include "platform/record_access.h"

void* PXLp_SkipAlignment(const PXL_PixelBuffer& pixels) {
  return static_cast<char*>(pixels.frame) + pixels.alignOffset;
}

void* PXLp_LocatePixels(PXL_WorldHandle worldH) {
  const PXL_World& world = *RecordOf(worldH);
  if (world.pixels.baseAddr != nullptr) return world.pixels.baseAddr;
  if (world.hasGWorld != 0) return GetPixBaseAddr(GetPortPixMap(world.gworld));
  return world.pixels.frame != nullptr ? PXLp_SkipAlignment(world.pixels) : nullptr;
}

void* PXLp_GetPixBaseAddr(PXL_WorldHandle worldH) {
  return PXLp_LocatePixels(worldH);
}
