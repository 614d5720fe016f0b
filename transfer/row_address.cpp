// The report of a wrong depth.
#include "transfer/row_address.h"

#include "state/messages/reports.h"

std::int32_t PXLp_RefuseAddress() {
  return PXLp_FailVerification(PXLp_MakeReportCode(PXLp_Site::RowAddress), 112,
                               "bad pointer access in PXLp_WorldGetBaseAddrXY()");
}
