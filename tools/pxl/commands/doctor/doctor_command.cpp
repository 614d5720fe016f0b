// Makes the sections of the doctor's report and prints it.
#include "tools/pxl/commands/doctor/doctor_command.h"

#include <iostream>

#include "tools/pxl/commands/doctor/doctor_memory.h"
#include "tools/pxl/commands/doctor/doctor_module.h"
#include "tools/pxl/system/exit_codes.h"

namespace pxl {

int Doctor(const DoctorOptions& options) {
  DoctorReport report;
  ExamineVersions(report);
  ExamineProcessor(report);
  ExamineSettings(report);
  ExamineLanguage(report, options.language);
  ExamineMemory(report);
  ExamineMappedFiles(report);
  options.json ? PrintJson(std::cout, report.AsJson()) : report.PrintText(std::cout);
  return report.IsHealthy() ? kExitSuccess : kExitFailure;
}

}  // namespace pxl
