// The report sequences.
#include "state/messages/reports.h"

#include "PXL.h"
#include "platform/K.h"

std::uint32_t PXLp_MakeReportCode(PXLp_Site site) {
  return std::uint32_t{PXL_ModuleNumber} << 16 | static_cast<std::uint32_t>(site);
}

void PXLp_ReportMessage(PXLp_Site site, PXLp_Message message) {
  Kp_ReportErrString(PXLp_MakeReportCode(site), PXLp_kClassError, PXLp_LookUpMessage(message));
}

std::int32_t PXLp_ReportMessageWithError(PXLp_Site site, PXLp_Message message, std::int32_t error) {
  return Kp_ReportQuexErrString(PXLp_MakeReportCode(site), PXLp_kClassError, error,
                                PXLp_LookUpMessage(message));
}

void PXLp_BeginReport(std::int32_t error) {
  Kp_G_err_buf = error;
}

void PXLp_SendReport(std::uint32_t code, std::uint16_t reportClass) {
  if (Kp_G_err_buf != 0) Kp_SysEnglishError(Kp_G_err_buf);
  Kp_ReportError(code, reportClass);
}

std::int32_t PXLp_FailVerification(std::uint32_t code, std::int32_t line, const char* text) {
  K_ReportFailedVerification(code, line, 0, text);
  return PXL_Err_REFUSED;
}
