// Asks the system for the state of a page.
#include <windows.h>

#include "tests/support/system/memory_state.h"

bool IsMapped(void* address) {
  MEMORY_BASIC_INFORMATION information{};
  return VirtualQuery(address, &information, sizeof information) != 0 &&
         information.State == MEM_COMMIT;
}
