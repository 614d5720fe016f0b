// Sections of the doctor's report: memory and mapped files.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_MEMORY_H
#define TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_MEMORY_H

#include "tools/pxl/commands/doctor/doctor_report.h"

namespace pxl {

// Allocates a frame for the time of the call.
void ExamineMemory(DoctorReport& report);
// Makes a small mapped file for the time of the call.
void ExamineMappedFiles(DoctorReport& report);

}  // namespace pxl

#endif
