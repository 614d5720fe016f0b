// pxl demo: pictures converted to every depth, each with a sheet of the results.
#ifndef TOOLS_PXL_COMMANDS_DEMO_COMMAND_H
#define TOOLS_PXL_COMMANDS_DEMO_COMMAND_H

#include <cstdint>
#include <filesystem>
#include <vector>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct DemoOptions {
  std::vector<std::filesystem::path> pictures;
  std::filesystem::path folder;           // created if it does not exist
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};

// Returns the exit code. Throws Failure.
int Demo(const DemoOptions& options);

}  // namespace pxl

#endif
