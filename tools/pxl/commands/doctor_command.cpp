#include <iostream>

#include "tools/pxl/commands/commands.h"
#include "tools/pxl/commands/doctor_checks.h"

namespace pxl {

int Doctor(const DoctorOptions& options) {
  DoctorReport report;
  ExamineVersions(report);
  ExamineProcessor(report);
  ExamineSettings(report);
  ExamineLanguage(report, options.language);
  ExamineMemory(report);
  ExamineMappedFiles(report);
  options.json ? report.PrintJson(std::cout) : report.PrintText(std::cout);
  return report.IsHealthy() ? kExitSuccess : kExitFailure;
}

}  // namespace pxl
