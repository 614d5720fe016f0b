// Asks the system for the state of a page.
#include <sys/mman.h>

#include <cstdint>

#include "tests/support/system/memory_state.h"

bool IsMapped(void* address) {
  unsigned char residency = 0;
  const auto page = reinterpret_cast<std::uintptr_t>(address) & ~std::uintptr_t{4095};
  return mincore(reinterpret_cast<void*>(page), 1, &residency) == 0;
}
