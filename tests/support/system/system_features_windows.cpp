// Features of the system: neither is needed here.
#include "tests/support/system/system_features.h"

bool HasPseudoTerminals() {
  return false;
}

bool HasProcessFiles() {
  return true;
}
