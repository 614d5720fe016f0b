// The resources of this process on Windows.
#include <windows.h>
//
#include <psapi.h>

#include <algorithm>

#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/process_use.h"

namespace pxl {

ProcessUse ReadProcessUse() {
  HeapCompact(GetProcessHeap(), 0);
  PROCESS_MEMORY_COUNTERS_EX memory{};
  memory.cb = sizeof memory;
  DWORD handles = 0;
  if (GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                           sizeof memory) == 0 ||
      GetProcessHandleCount(GetCurrentProcess(), &handles) == 0) {
    throw Failure("this process", "the system does not provide its use of resources");
  }
  // Versions of the system differ in which of the two they set.
  const SIZE_T committed = std::max(memory.PrivateUsage, memory.PagefileUsage);
  return {0, committed, memory.WorkingSetSize, handles};
}

}  // namespace pxl
