// Streams of the C library on Windows.
#include <io.h>

#include "host/K/system/streams.h"
#include "host/utf8_path.h"

namespace k {

// A narrow name would be read in the code page, which lacks most characters.
std::FILE* OpenFile(const std::string& path) {
  return _wfopen(PathOfUtf8(path).c_str(), L"rb");
}

void RingBell() {
  if (_isatty(_fileno(stderr)) != 0) std::fputc('\a', stderr);
}

}  // namespace k
