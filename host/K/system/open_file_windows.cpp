// Windows takes narrow names for those of a code page that has hardly any
// letters.
#include "host/K/system/open_file.h"
#include "host/utf8_path.h"

namespace k {

std::FILE* OpenFile(const std::string& path) {
  return _wfopen(PathOfUtf8(path).c_str(), L"rb");
}

}  // namespace k
