#include <unistd.h>

#include "tools/pxl/progress.h"

namespace pxl {

bool StandardErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

}  // namespace pxl
