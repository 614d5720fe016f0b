#include "transfer/row_address.h"

#include "state/messages/Messages.h"

std::int32_t PXLp_RefuseAddress() {
  return PXLp_FailVerification(PXLp_ReportCode(PXLp_Site::RowAddress), 112,
                               "bad pointer access in PXLp_WorldGetBaseAddrXY()");
}
