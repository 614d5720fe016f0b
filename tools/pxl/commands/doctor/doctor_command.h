// pxl doctor: a report of the requirements of PXL on this machine.
#ifndef TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_COMMAND_H
#define TOOLS_PXL_COMMANDS_DOCTOR_DOCTOR_COMMAND_H

#include <optional>
#include <string>

namespace pxl {

struct DoctorOptions {
  bool json = false;
  std::optional<std::string> language;  // the translation's file
};

// Returns kExitFailure if the report has a problem. Throws UsageError.
int Doctor(const DoctorOptions& options);

}  // namespace pxl

#endif
