#include <unistd.h>

#include <cstdio>

#include "host/K/system/console.h"

namespace k {

void RingBell() {
  if (isatty(STDERR_FILENO) != 0) std::fputc('\a', stderr);
}

}  // namespace k
