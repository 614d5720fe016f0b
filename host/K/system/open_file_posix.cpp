#include "host/K/system/open_file.h"

namespace k {

std::FILE* OpenFile(const std::string& path) {
  return std::fopen(path.c_str(), "rb");
}

}  // namespace k
