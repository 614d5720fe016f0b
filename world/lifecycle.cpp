// Birth and death of the module.
#include "PXL.h"
#include "platform/TRC.h"
#include "state/messages/reports.h"
#include "transfer/kernels/conversion_tables.h"
#include "transfer/kernels/selection.h"

constinit PXL_ModuleState PXLp_G = {0, 0, 0};

namespace {

constexpr std::int32_t kLogLevel = 10;

}  // namespace

// Birth is refused for any mark but 0, death for any but the right one: a
// damaged state blocks both.

std::int32_t PXL_Birth(std::uint32_t birthArg) {
  TRC_Log(kLogLevel, "PXL", "Birth", "PXL Birth");
  if (PXLp_G.bornMark != 0) {
    PXLp_ReportMessage(PXLp_Site::Birth, PXLp_Message::Rebirth);
    return PXL_Err_NONE;
  }
  PXLp_G.bornMark = PXL_LiveMark;
  PXLp_G.birthArg = birthArg;
  PXLp_G.worldCount = 0;
  PXLp_BuildConversionTables();
  PXLp_SelectKernels();
  return PXL_Err_NONE;
}

std::int32_t PXL_Death(void) {
  TRC_Log(kLogLevel, "PXL", "Death", "PXL Death");
  if (PXLp_G.bornMark != PXL_LiveMark) {
    PXLp_ReportMessage(PXLp_Site::Death, PXLp_Message::DoubleDeath);
    return PXL_Err_INVALID;
  }
  PXLp_G.bornMark = 0;
  return PXL_Err_NONE;
}
