// An operator new that fails on demand.
#include "tests/stand_ins/QDE/scarce_new.h"

#include <cstddef>
#include <cstdlib>
#include <new>

thread_local int allocationsLeft = kEnough;

namespace {

void* Allocate(std::size_t size) {
  if (allocationsLeft == 0) return nullptr;
  if (allocationsLeft > 0) --allocationsLeft;
  return std::malloc(size > 0 ? size : 1);
}

}  // namespace

void* operator new(std::size_t size) {
  void* memory = Allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
