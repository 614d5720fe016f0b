// The output file of each input of pxl convert.
#ifndef TOOLS_PXL_COMMANDS_CONVERT_PLAN_H
#define TOOLS_PXL_COMMANDS_CONVERT_PLAN_H

#include <filesystem>
#include <vector>

#include "tools/pxl/commands/convert_command.h"
#include "tools/pxl/formats/picture_file.h"

namespace pxl {

struct ConvertJob {
  std::filesystem::path input;
  std::filesystem::path output;
  FileFormat format;
};

// In a folder the name is kept and the ending follows the depth: .png for 32
// and 64, .exr for 128. Throws UsageError for an unknown ending, for two
// pictures with the same output, for several with one file, and for an output
// that is also an input; Failure for a folder that does not exist.
std::vector<ConvertJob> PlanConversion(const ConvertOptions& options);

}  // namespace pxl

#endif
