// The version of the package and of the libraries that it imports.
#include <cstdio>

#include "PXL.h"
#include "platform/K.h"
#include "platform/Q.h"
#include "platform/TXT.h"
#include "state/messages/reports.h"
#include "world/version_check_reset.h"

namespace {

constinit bool librariesChecked = false;

constexpr std::int32_t kRevision = 14;
constexpr std::uint32_t kPackageVersion = PXL_InterfaceVersion << 16 | kRevision;

// The header versions that the module is built with.
constexpr std::int32_t kHeaderOfK = 61;
constexpr std::int32_t kHeaderOfQ = 18;
constexpr std::int32_t kHeaderOfTXT = 3;

// Checks all three even if one fails: each reports its own mismatch. Later calls
// of the process return 0 without checking.
std::int32_t CheckLibrariesOnce() {
  if (librariesChecked) return 0;
  librariesChecked = true;
  const std::uint32_t code = PXLp_MakeReportCode(PXLp_Site::VersionChecks);
  const std::int32_t k = K_CheckVersions(code, kHeaderOfK);
  const std::int32_t q = Q_CheckVersions(code, kHeaderOfQ);
  const std::int32_t txt = TXT_CheckVersions(code, kHeaderOfTXT);
  return k | q | txt;
}

void ReportMismatch(std::uint32_t code, std::int32_t packageVersion, std::int32_t headerVersion) {
  PXLp_BeginReport(0);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer,
                "Plug-in version mismatch detected (did you install over an older version of "
                "Orvanta?). Try uninstalling and re-installing. (%s package v%d != %s.h v%d)",
                "PXL", packageVersion, "PXL", headerVersion);
  PXLp_SendReport(code, PXLp_kClassVersion);
}

}  // namespace

bool& PXLp_AccessLibrariesChecked() {
  return librariesChecked;
}

std::uint32_t PXL_PkgObjectVersion(void) {
  return kPackageVersion;
}

std::int32_t PXL_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  const std::int32_t libraries = CheckLibrariesOnce();
  const auto packageVersion = static_cast<std::int32_t>(kPackageVersion >> 16);
  if (packageVersion != headerVersion) {
    ReportMismatch(reportCode, packageVersion, headerVersion);
    return PXL_Err_VERSION;
  }
  return libraries != 0 ? PXL_Err_VERSION : PXL_Err_NONE;
}
