#include <io.h>

#include <cstdio>

#include "tools/pxl/system/progress.h"

namespace pxl {

bool StandardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

}  // namespace pxl
