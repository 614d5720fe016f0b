// The command line.
#ifndef TOOLS_PXL_ARGUMENTS_H
#define TOOLS_PXL_ARGUMENTS_H

#include <functional>
#include <string>
#include <vector>

namespace pxl {

// The request of the command line: a verb with its options, or the printing of
// help.
struct Command {
  std::function<int()> run;  // returns the exit code
  int failureCode;           // the exit code when it throws Failure
};

// The first argument is the program. Throws UsageError.
Command ParseArguments(const std::vector<std::string>& arguments);

}  // namespace pxl

#endif
