// Memory between pages without access, by VirtualAlloc.
#include <windows.h>

#include <new>

#include "tools/proof/fenced_memory.h"

namespace proof {
namespace {

std::size_t Page() {
  SYSTEM_INFO info{};
  GetSystemInfo(&info);
  return info.dwPageSize;
}

}  // namespace

// Reserved pages that are not committed allow no access.
FencedMemory::FencedMemory(std::size_t bytes) {
  const std::size_t page = Page();
  const std::size_t inside = (bytes + page - 1) / page * page;
  void* all = VirtualAlloc(nullptr, inside + 2 * page, MEM_RESERVE, PAGE_NOACCESS);
  if (all == nullptr) throw std::bad_alloc();
  begin_ = static_cast<unsigned char*>(all) + page;
  end_ = begin_ + inside;
  if (inside != 0 && VirtualAlloc(begin_, inside, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    VirtualFree(all, 0, MEM_RELEASE);
    throw std::bad_alloc();
  }
}

FencedMemory::~FencedMemory() {
  VirtualFree(begin_ - Page(), 0, MEM_RELEASE);
}

}  // namespace proof
