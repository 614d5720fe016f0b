#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

#include "virtual_memory.h"

namespace k {
namespace {

constexpr std::uint64_t kLargePage = std::uint64_t{2} << 20;

char* Map(std::uint64_t size) {
  void* base = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  return base != MAP_FAILED ? static_cast<char*>(base) : nullptr;
}

void Unmap(void* base, std::uint64_t size) {
  if (size != 0) munmap(base, size);
}

// Maps more than is needed and cuts off what stands over at either end.
char* MapAligned(std::uint64_t size) {
  char* base = Map(size + kLargePage);
  if (base == nullptr) return nullptr;
  const std::uint64_t excess = reinterpret_cast<std::uintptr_t>(base) % kLargePage;
  const std::uint64_t before = (kLargePage - excess) % kLargePage;
  Unmap(base, before);
  Unmap(base + before + size, kLargePage - before);
  return base + before;
}

}  // namespace

std::uint64_t PageSize() {
  static const auto size = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  return size;
}

void* MapMemory(std::uint64_t size) {
  if (size < kLargePage) return Map(size);
  char* base = MapAligned(size);
  // The room for the alignment may be what is missing.
  if (base == nullptr) return Map(size);
  // Advice only: a system without large pages serves as well.
  madvise(base, size, MADV_HUGEPAGE);
  return base;
}

void UnmapMemory(void* base, std::uint64_t size) {
  Unmap(base, size);
}

bool ForbidMemory(void* base, std::uint64_t size) {
  return mprotect(base, size, PROT_NONE) == 0;
}

}  // namespace k
