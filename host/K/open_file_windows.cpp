// Windows takes narrow names for those of a code page that has hardly any
// letters.
#include "host/utf8_path.h"
#include "open_file.h"

namespace k {

std::FILE* OpenFile(const std::string& path) {
  return _wfopen(PathOfUtf8(path).c_str(), L"rb");
}

}  // namespace k
