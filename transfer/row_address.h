// The address of a pixel in a locked World.
#ifndef TRANSFER_ROW_ADDRESS_H
#define TRANSFER_ROW_ADDRESS_H

#include <cstdint>

#include "PXL.h"
#include "platform/record_access.h"

// Reports that a World has not the depth that its reader counts on, and gives
// PXL_Err_REFUSED.
std::int32_t PXLp_RefuseAddress();

// Sets *address to pixel (x, y) of a World that must have the expected depth;
// otherwise reports and gives PXL_Err_REFUSED. The World is held locked by the
// caller: its base address is taken as it stands, and a negative stride is
// followed. Inline, since a blit asks twice for each row.
[[gnu::always_inline]] inline std::int32_t PXLp_WorldGetBaseAddrXY(PXL_WorldHandle worldH,
                                                                   std::int32_t expectedDepth,
                                                                   std::int32_t x, std::int32_t y,
                                                                   void** address) {
  const PXL_World& world = *RecordOf(worldH);
  if (world.depth != expectedDepth) return PXLp_RefuseAddress();
  const std::int64_t offset =
      std::int64_t{world.pixels.rowBytes} * y + std::int64_t{x} * (world.depth / 8);
  *address = static_cast<char*>(world.pixels.baseAddr) + offset;
  return PXL_Err_NONE;
}

#endif
