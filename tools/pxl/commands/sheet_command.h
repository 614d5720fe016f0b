// pxl sheet: a sheet of all depths and the changes that each makes.
#ifndef TOOLS_PXL_COMMANDS_SHEET_COMMAND_H
#define TOOLS_PXL_COMMANDS_SHEET_COMMAND_H

#include <cstdint>
#include <filesystem>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct SheetOptions {
  std::filesystem::path picture;
  std::filesystem::path output;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};

// Returns the exit code. Throws Failure.
int Sheet(const SheetOptions& options);

}  // namespace pxl

#endif
