#include <csignal>

#include "tools/pxl/system/command_line.h"

namespace pxl {

std::vector<std::string> CommandLine(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

// The streams do. A file that outgrows the limit for files is an error to tell,
// where the signal would end the program over a half-written one.
void PrepareOutput() {
  std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace pxl
