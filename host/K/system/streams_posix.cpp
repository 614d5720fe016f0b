// Streams of the C library on POSIX systems.
#include <unistd.h>

#include "host/K/system/streams.h"

namespace k {

std::FILE* OpenFile(const std::string& path) {
  return std::fopen(path.c_str(), "rb");
}

void RingBell() {
  if (isatty(STDERR_FILENO) != 0) std::fputc('\a', stderr);
}

}  // namespace k
