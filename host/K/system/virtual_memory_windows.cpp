// Whole pages of memory from Windows.
#include <windows.h>

#include <cstdint>

#include "host/K/system/virtual_memory.h"

namespace k {

std::uint64_t PageSize() {
  static const std::uint64_t size = [] {
    SYSTEM_INFO info{};
    GetSystemInfo(&info);
    return std::uint64_t{info.dwPageSize};
  }();
  return size;
}

// No large pages: they need a privilege that users do not have.
void* MapMemory(std::uint64_t size) {
  return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

// VirtualFree releases the whole allocation and requires a size of 0.
void UnmapMemory(void* base, std::uint64_t, void*) {
  VirtualFree(base, 0, MEM_RELEASE);
}

bool ForbidMemory(void* base, std::uint64_t size) {
  DWORD before = 0;
  return VirtualProtect(base, size, PAGE_NOACCESS, &before) != 0;
}

}  // namespace k
