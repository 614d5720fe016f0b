// Sections of the doctor's report: versions, processor, settings and language.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_MODULE_H
#define TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_MODULE_H

#include <optional>
#include <string>

#include "tools/pxl/commands/doctor/doctor_report.h"

namespace pxl {

// Brings the module to life for the time of the call.
void ExamineVersions(DoctorReport& report);
void ExamineProcessor(DoctorReport& report);
void ExamineSettings(DoctorReport& report);
// Puts the translation in force. Throws UsageError for an empty name.
void ExamineLanguage(DoctorReport& report, const std::optional<std::string>& file);

}  // namespace pxl

#endif
