// Windows takes narrow names for those of a code page that has hardly any
// letters.
#include <filesystem>

#include "open_file.h"

namespace k {

std::FILE* OpenFile(const std::string& path) {
  const auto* bytes = reinterpret_cast<const char8_t*>(path.data());
  return _wfopen(std::filesystem::path(bytes, bytes + path.size()).c_str(), L"rb");
}

}  // namespace k
