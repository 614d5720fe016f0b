// Whole pages of memory from a POSIX system.
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <mutex>
#include <new>

#include "host/K/system/system_calls_posix.h"
#include "host/K/system/virtual_memory.h"

namespace k {
namespace {

constexpr std::uint64_t kLargePage = std::uint64_t{2} << 20;

char* Map(std::uint64_t size) {
  void* base = system::Map(size);
  return base != MAP_FAILED ? static_cast<char*>(base) : nullptr;
}

// Pages that the system refused to unmap: the number of mappings is limited, and
// unmapping the middle of a mapping makes one more.
struct Kept {
  Kept* next;
  void* base;
  std::uint64_t size;
};
std::mutex theKeptMutex;
Kept* theKept = nullptr;
std::atomic<bool> theKeptAreSome = false;

void Keep(void* base, std::uint64_t size, void* writable) {
  system::Advise(base, size, MADV_DONTNEED);
  const std::lock_guard lock(theKeptMutex);
  theKept = new (writable) Kept{theKept, base, size};
  theKeptAreSome = true;
}

void DropKept() {
  const std::lock_guard lock(theKeptMutex);
  Kept** place = &theKept;
  while (*place != nullptr) {
    const Kept kept = **place;
    if (system::Unmap(kept.base, kept.size) == 0) {
      *place = kept.next;
    } else {
      place = &(*place)->next;
    }
  }
  theKeptAreSome = theKept != nullptr;
}

void Unmap(void* base, std::uint64_t size, void* writable) {
  if (size == 0) return;
  if (system::Unmap(base, size) != 0) return Keep(base, size, writable);
  if (theKeptAreSome) DropKept();
}

// Maps more than necessary and unmaps the excess at both ends.
char* MapAligned(std::uint64_t size) {
  char* base = Map(size + kLargePage);
  if (base == nullptr) return nullptr;
  const std::uint64_t excess = reinterpret_cast<std::uintptr_t>(base) % kLargePage;
  const std::uint64_t before = (kLargePage - excess) % kLargePage;
  char* after = base + before + size;
  Unmap(base, before, base);
  Unmap(after, kLargePage - before, after);
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
  // There may be no room for the alignment only.
  if (base == nullptr) return Map(size);
  // The result is ignored: a system may lack large pages.
  system::Advise(base, size, MADV_HUGEPAGE);
  return base;
}

void UnmapMemory(void* base, std::uint64_t size, void* writable) {
  Unmap(base, size, writable);
}

bool ForbidMemory(void* base, std::uint64_t size) {
  return system::Protect(base, size, PROT_NONE) == 0;
}

}  // namespace k
