// The command line.
#ifndef TOOLS_PXL_ARGUMENTS_H
#define TOOLS_PXL_ARGUMENTS_H

#include <functional>

namespace pxl {

// What the command line asks for: a verb with its options, or the printing of
// help. Running it gives the exit code. Throws UsageError.
std::function<int()> ParseArguments(int count, const char* const* arguments);

}  // namespace pxl

#endif
