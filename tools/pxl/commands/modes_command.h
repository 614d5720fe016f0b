// pxl modes: a sheet of all transfer modes.
#ifndef TOOLS_PXL_COMMANDS_MODES_COMMAND_H
#define TOOLS_PXL_COMMANDS_MODES_COMMAND_H

#include <cstdint>
#include <filesystem>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct ModesOptions {
  std::filesystem::path source;
  std::filesystem::path destination;
  std::filesystem::path output;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};

// Returns the exit code. Throws Failure.
int Modes(const ModesOptions& options);

}  // namespace pxl

#endif
