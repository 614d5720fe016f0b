// All calls of K to a POSIX system for pages.
#include "host/K/system/system_calls_posix.h"

#include <sys/mman.h>

namespace k::system {

void* Map(std::size_t size) {
  return mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
}

int Unmap(void* base, std::size_t size) {
  return munmap(base, size);
}

int Protect(void* base, std::size_t size, int protection) {
  return mprotect(base, size, protection);
}

int Advise(void* base, std::size_t size, int advice) {
  return madvise(base, size, advice);
}

}  // namespace k::system
