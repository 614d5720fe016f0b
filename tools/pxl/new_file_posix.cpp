#include <cerrno>
#include <cstdio>

#include "tools/pxl/new_file.h"

namespace pxl {

bool CreateNewFile(const std::filesystem::path& path) {
  errno = 0;
  std::FILE* file = std::fopen(path.c_str(), "wbx");
  if (file == nullptr) return false;
  std::fclose(file);
  return true;
}

}  // namespace pxl
