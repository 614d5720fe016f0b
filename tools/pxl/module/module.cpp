// Birth and death of the module, its reports, and its version.
#include "tools/pxl/module/module.h"

#include "PXL.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

// The code of reports that the module makes for this program. The module number is
// free for applications.
constexpr std::uint32_t kReportCode = 0x7F0001;

// The drawing layer's error for lack of memory.
constexpr std::int32_t kMemoryFull = -108;

}  // namespace

Module::Module() {
  K_SetReportSink(Take, this);
  try {
    Check(PXL_CheckVersions(kReportCode, PXL_InterfaceVersion));
    Check(PXL_Birth(0));
  } catch (...) {
    K_SetReportSink(nullptr, nullptr);
    throw;
  }
}

Module::~Module() {
  PXL_Death();
  K_SetReportSink(nullptr, nullptr);
  // Reports of disposals and of the death, which no Check has seen.
  if (!reports_.empty()) PrintFailure("PXL", TakeReports());
}

void Module::Check(std::int32_t status) {
  const std::string reports = TakeReports();
  if (status == PXL_Err_NO_MEMORY || status == kMemoryFull) {
    throw Shortage(reports.empty() ? "not enough memory" : reports);
  }
  if (!reports.empty()) throw Failure(reports);
  if (status != PXL_Err_NONE) throw Failure("the module returns error " + std::to_string(status));
}

void Module::Take(const K_Report* report, void* module) {
  static_cast<Module*>(module)->reports_.emplace_back(report->text);
}

std::string Module::TakeReports() {
  std::string text;
  for (const std::string& report : reports_) text += text.empty() ? report : "; " + report;
  reports_.clear();
  return text;
}

std::string PackageVersion() {
  const std::uint32_t version = PXL_PkgObjectVersion();
  return std::to_string(version >> 16) + "." + std::to_string(version & 0xFFFFU);
}

}  // namespace pxl
