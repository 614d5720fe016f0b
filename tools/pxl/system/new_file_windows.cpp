#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cerrno>

#include "tools/pxl/system/new_file.h"

namespace pxl {

int CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  constexpr int kNewOnly = _O_CREAT | _O_EXCL | _O_RDWR | _O_BINARY;
  return _wopen(path.c_str(), kNewOnly, _S_IREAD | _S_IWRITE);
}

}  // namespace pxl
