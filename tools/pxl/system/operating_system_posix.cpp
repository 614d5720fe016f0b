// Arguments, standard streams and new files on POSIX systems.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "tools/pxl/system/operating_system.h"

namespace pxl {

std::vector<std::string> CommandLine(int count, const char* const* arguments) {
  return {arguments, arguments + count};
}

// The streams need nothing. A file beyond the limit for files is an error to
// report; the signal would end the program and leave a half-written file.
void PrepareOutput() {
  std::signal(SIGXFSZ, SIG_IGN);
}

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

int CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  // The user's mask removes the rights that others must not have.
  constexpr mode_t kEverybody = 0666;
  return open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kEverybody);
}

}  // namespace pxl
