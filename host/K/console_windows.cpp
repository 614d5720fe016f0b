#include <io.h>

#include <cstdio>

#include "console.h"

namespace k {

void RingBell() {
  if (_isatty(_fileno(stderr)) != 0) std::fputc('\a', stderr);
}

}  // namespace k
