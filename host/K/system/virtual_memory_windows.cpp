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

// Large pages would need a right that users do not have.
void* MapMemory(std::uint64_t size) {
  return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

// What was mapped at once goes at once; the size must not be given.
void UnmapMemory(void* base, std::uint64_t, void*) {
  VirtualFree(base, 0, MEM_RELEASE);
}

bool ForbidMemory(void* base, std::uint64_t size) {
  DWORD before = 0;
  return VirtualProtect(base, size, PAGE_NOACCESS, &before) != 0;
}

}  // namespace k
