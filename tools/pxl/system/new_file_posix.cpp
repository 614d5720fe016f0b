#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "tools/pxl/system/new_file.h"

namespace pxl {

int CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  // Who else may read it is for the user's mask to say.
  constexpr mode_t kEverybody = 0666;
  return open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kEverybody);
}

}  // namespace pxl
