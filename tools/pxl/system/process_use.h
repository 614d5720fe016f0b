// The resources of the system that this process uses.
#ifndef TOOLS_PXL_SYSTEM_PROCESS_USE_H
#define TOOLS_PXL_SYSTEM_PROCESS_USE_H

#include <cstdint>

namespace pxl {

struct ProcessUse {
  std::uint64_t heap = 0;       // bytes of blocks in use; 0 where the runtime has no such number
  std::uint64_t addresses = 0;  // bytes of addresses; on Windows, of memory committed to it alone
  std::uint64_t resident = 0;   // bytes of memory
  std::uint64_t handles = 0;    // of files and the like; descriptors on Linux
};

// Returns unused memory of the heap to the system first, as far as possible. Throws
// Failure when the system does not provide the numbers.
ProcessUse ReadProcessUse();

}  // namespace pxl

#endif
