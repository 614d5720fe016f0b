// The check of the marks of a World record.
#include "world/record/validity.h"

#include "platform/record_access.h"

std::int32_t PXLp_CheckWorld(PXLp_Site site, PXL_WorldHandle worldH) {
  const PXL_World& world = *RecordOf(worldH);
  if (world.headMark == PXL_LiveMark && world.tailMark == PXL_LiveMark) return PXL_Err_NONE;
  return PXLp_ReportMessageWithError(site, PXLp_Message::CheckingWorld, PXL_Err_INVALID);
}
