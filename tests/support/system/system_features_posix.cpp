// Features of the system: pseudo-terminals and /proc.
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

#include "tests/support/system/system_features.h"

bool HasPseudoTerminals() {
  const int controller = posix_openpt(O_RDWR | O_NOCTTY);
  if (controller < 0) return false;
  const bool ready = grantpt(controller) == 0 && unlockpt(controller) == 0;
  // The folder of the terminals may be missing although their device is there.
  const int terminal = ready ? open(ptsname(controller), O_RDWR | O_NOCTTY) : -1;
  if (terminal >= 0) close(terminal);
  close(controller);
  return terminal >= 0;
}

bool HasProcessFiles() {
  return access("/proc/self/statm", R_OK) == 0;
}
