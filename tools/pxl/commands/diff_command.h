// pxl diff: two pictures compared sample by sample.
#ifndef TOOLS_PXL_COMMANDS_DIFF_COMMAND_H
#define TOOLS_PXL_COMMANDS_DIFF_COMMAND_H

#include <cstdint>
#include <filesystem>
#include <optional>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct DiffOptions {
  std::filesystem::path first;
  std::filesystem::path second;
  std::uint64_t tolerance = 0;            // steps of the files' samples; ULPs of floats
  bool anyChannels = false;               // compare missing channels by their defaults
  std::uint64_t maxPixels = kMostPixels;  // of a picture
  std::optional<std::filesystem::path> output;
  bool json = false;
};

// Returns kExitSame or kExitDifferent. Throws Failure when nothing was compared.
int Diff(const DiffOptions& options);

}  // namespace pxl

#endif
