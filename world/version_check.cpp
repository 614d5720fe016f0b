#include "world/version_check.h"

#include <cstdio>

#include "PXL.h"
#include "platform/K.h"
#include "platform/Q.h"
#include "platform/TXT.h"
#include "state/messages/Messages.h"

constinit bool PXLp_librariesChecked = false;

namespace {

constexpr std::int32_t REVISION = 14;
constexpr std::uint32_t PACKAGE_VERSION = PXL_InterfaceVersion << 16 | REVISION;

// The header versions that the module is built with.
constexpr std::int32_t K_HEADER = 61;
constexpr std::int32_t Q_HEADER = 18;
constexpr std::int32_t TXT_HEADER = 3;

// Asks all three, whatever the first ones say: each reports for itself. Later
// calls of the process find nothing wrong.
std::int32_t CheckLibrariesOnce() {
  if (PXLp_librariesChecked) return 0;
  PXLp_librariesChecked = true;
  const std::uint32_t code = PXLp_ReportCode(PXLp_Site::VersionChecks);
  const std::int32_t k = K_CheckVersions(code, K_HEADER);
  const std::int32_t q = Q_CheckVersions(code, Q_HEADER);
  const std::int32_t txt = TXT_CheckVersions(code, TXT_HEADER);
  return k | q | txt;
}

void ReportMismatch(std::uint32_t code, std::int32_t packageVersion, std::int32_t headerVersion) {
  PXLp_BeginReport(0);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer,
                "Plug-in version mismatch detected (did you install over an older version of "
                "Orvanta?). Try uninstalling and re-installing. (%s package v%d != %s.h v%d)",
                "PXL", packageVersion, "PXL", headerVersion);
  PXLp_SendReport(code, PXLp_Class_VERSION);
}

}  // namespace

std::uint32_t PXL_PkgObjectVersion(void) {
  return PACKAGE_VERSION;
}

std::int32_t PXL_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  const std::int32_t libraries = CheckLibrariesOnce();
  const auto packageVersion = static_cast<std::int32_t>(PACKAGE_VERSION >> 16);
  if (packageVersion != headerVersion) {
    ReportMismatch(reportCode, packageVersion, headerVersion);
    return PXL_Err_VERSION;
  }
  return libraries != 0 ? PXL_Err_VERSION : PXL_Err_NONE;
}
