#include <io.h>

#include <cstdio>

#include "host/K/system/console.h"

namespace k {

void RingBell() {
  if (_isatty(_fileno(stderr)) != 0) std::fputc('\a', stderr);
}

}  // namespace k
