#include "tools/pxl/command_line.h"

namespace pxl {

std::vector<std::string> CommandLine(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

// They do.
void PrepareOutput() {
}

}  // namespace pxl
