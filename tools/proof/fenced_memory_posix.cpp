// Memory between pages without access, by mmap.
#include <sys/mman.h>
#include <unistd.h>

#include <new>

#include "tools/proof/fenced_memory.h"

namespace proof {
namespace {

std::size_t Page() {
  return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

FencedMemory::FencedMemory(std::size_t bytes) {
  const std::size_t page = Page();
  const std::size_t inside = (bytes + page - 1) / page * page;
  void* all = mmap(nullptr, inside + 2 * page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (all == MAP_FAILED) throw std::bad_alloc();
  begin_ = static_cast<unsigned char*>(all) + page;
  end_ = begin_ + inside;
  if (inside != 0 && mprotect(begin_, inside, PROT_READ | PROT_WRITE) != 0) {
    munmap(all, inside + 2 * page);
    throw std::bad_alloc();
  }
}

FencedMemory::~FencedMemory() {
  const std::size_t page = Page();
  munmap(begin_ - page, static_cast<std::size_t>(end_ - begin_) + 2 * page);
}

}  // namespace proof
