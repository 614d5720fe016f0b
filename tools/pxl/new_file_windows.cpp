#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>

#include "tools/pxl/new_file.h"

namespace pxl {

bool CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  constexpr int kNewOnly = _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY;
  const int descriptor = _wopen(path.c_str(), kNewOnly, _S_IREAD | _S_IWRITE);
  if (descriptor < 0) return false;
  _close(descriptor);
  return true;
}

}  // namespace pxl
