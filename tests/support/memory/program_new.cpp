// Takes the place of the program's `new` and `delete`, those of the libraries that
// it loads included.
#include "tests/support/memory/program_new.h"

#include <new>

void* operator new(std::size_t size) {
  void* block = program_new::Allocate(size != 0 ? size : 1);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

// Of the same kind: its blocks come back through the same delete.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  program_new::Free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  program_new::Free(block);
}
