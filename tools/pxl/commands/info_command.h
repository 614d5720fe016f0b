// pxl info: versions, settings and the geometry of a picture.
#ifndef TOOLS_PXL_COMMANDS_INFO_COMMAND_H
#define TOOLS_PXL_COMMANDS_INFO_COMMAND_H

#include <cstdint>
#include <filesystem>
#include <optional>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct InfoOptions {
  std::optional<std::filesystem::path> file;
  std::optional<std::int32_t> depth;      // with a file; the picture's own if none
  std::uint64_t maxPixels = kMostPixels;  // of a picture
  bool json = false;
};

// Returns the exit code. Throws Failure.
int Info(const InfoOptions& options);

}  // namespace pxl

#endif
