// Pages of the pool, with calls that fail.
#include "tests/support/failing_system_calls/page_calls_posix.h"

#include <sys/mman.h>

#include "host/K/system/system_calls_posix.h"

using failing_system_calls::Fails;

namespace {

std::int64_t mappedBytes = 0;

}  // namespace

std::int64_t failing_system_calls::MappedBytes() {
  return mappedBytes;
}

namespace k::system {

void* Map(std::size_t size) {
  if (Fails("mmap")) return MAP_FAILED;
  void* base = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (base != MAP_FAILED) mappedBytes += static_cast<std::int64_t>(size);
  return base;
}

int Unmap(void* base, std::size_t size) {
  if (Fails("munmap")) return -1;
  mappedBytes -= static_cast<std::int64_t>(size);
  return munmap(base, size);
}

int Protect(void* base, std::size_t size, int protection) {
  return Fails("mprotect") ? -1 : mprotect(base, size, protection);
}

int Advise(void* base, std::size_t size, int advice) {
  return Fails("madvise") ? -1 : madvise(base, size, advice);
}

}  // namespace k::system
