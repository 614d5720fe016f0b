// pxl convert: pictures converted to another depth.
#ifndef TOOLS_PXL_COMMANDS_CONVERT_COMMAND_H
#define TOOLS_PXL_COMMANDS_CONVERT_COMMAND_H

#include <cstdint>
#include <filesystem>
#include <vector>

#include "tools/pxl/module/world.h"

namespace pxl {

struct ConvertOptions {
  std::vector<std::filesystem::path> inputs;
  std::filesystem::path output;  // a file, or a folder that exists
  std::int32_t depth = 0;
  std::vector<std::int32_t> via;
  Backing backing = Backing::Frame;
  bool blitOnly = false;
  bool dither = false;
  bool verbose = false;
  std::uint64_t maxPixels = kMostPixels;  // of a picture
};

// Returns the exit code. A picture that fails is reported; the others are
// converted. Throws UsageError, and Failure when the output is not usable.
int Convert(const ConvertOptions& options);

}  // namespace pxl

#endif
