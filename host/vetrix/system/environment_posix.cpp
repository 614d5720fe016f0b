// Environment variables and the temporary folder of POSIX systems.
#include <cstdlib>

#include "host/vetrix/system/environment.h"

namespace vetrix {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// Not /tmp, which is often in memory: mapped files are meant to save memory.
std::string FolderForLargeFiles() {
  return "/var/tmp";
}

}  // namespace vetrix
