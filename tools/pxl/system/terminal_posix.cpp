#include <unistd.h>

#include "tools/pxl/system/progress.h"

namespace pxl {

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace pxl
