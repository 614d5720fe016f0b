// The address of a pixel in a locked World.
#ifndef TRANSFER_ROW_ADDRESS_H
#define TRANSFER_ROW_ADDRESS_H

#include <cstdint>

#include "PXL.h"
#include "platform/record_access.h"

// Reports that a World does not have the expected depth. Returns
// PXL_Err_REFUSED.
[[nodiscard]] std::int32_t PXLp_RefuseAddress();

// Sets *address to pixel (x, y) of a World. Reports and returns PXL_Err_REFUSED
// if the World does not have the expected depth. The caller holds the World
// locked: its base address is not checked, and the stride may be negative.
// Inline, since a blit calls this twice for each row.
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
