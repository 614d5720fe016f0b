// The command line.
#ifndef TOOLS_PXL_ARGUMENTS_H
#define TOOLS_PXL_ARGUMENTS_H

#include <functional>
#include <string>
#include <vector>

namespace pxl {

// What the command line asks for: a verb with its options, or the printing of
// help. The first argument is the program. Running it gives the exit code. Throws UsageError.
std::function<int()> ParseArguments(const std::vector<std::string>& arguments);

}  // namespace pxl

#endif
