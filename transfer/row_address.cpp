#include "transfer/row_address.h"

#include "platform/record_access.h"
#include "state/messages/Messages.h"

std::int32_t PXLp_WorldGetBaseAddrXY(PXL_WorldHandle worldH, std::int32_t expectedDepth,
                                     std::int32_t x, std::int32_t y, void** address) {
  const PXL_World& world = *RecordOf(worldH);
  if (world.depth != expectedDepth) {
    return PXLp_FailVerification(PXLp_ReportCode(PXLp_Site::RowAddress), 112,
                                 "bad pointer access in PXLp_WorldGetBaseAddrXY()");
  }
  const std::int64_t offset =
      std::int64_t{world.pixels.rowBytes} * y + std::int64_t{x} * (world.depth / 8);
  *address = static_cast<char*>(world.pixels.baseAddr) + offset;
  return PXL_Err_NONE;
}
