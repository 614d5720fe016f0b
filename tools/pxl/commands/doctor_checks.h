// What the doctor looks at. Each adds a section of its own to the report, with
// the problems that it finds.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_CHECKS_H
#define TOOLS_PXL_COMMANDS_DOCTOR_CHECKS_H

#include <optional>
#include <string>

#include "tools/pxl/commands/doctor_report.h"

namespace pxl {

// Brings the module to life, for as long as it takes.
void ExamineVersions(DoctorReport& report);
void ExamineProcessor(DoctorReport& report);
void ExamineSettings(DoctorReport& report);
// Puts the translation to use.
void ExamineLanguage(DoctorReport& report, const std::optional<std::string>& file);
// Allocates a frame, for as long as it takes.
void ExamineMemory(DoctorReport& report);
// Makes a small mapped file, for as long as it takes.
void ExamineMappedFiles(DoctorReport& report);

}  // namespace pxl

#endif
