// The `new` under the module, which can be made to fail.
#include <cstdlib>
#include <new>

#include "tests/support/recorder/recorder.h"

extern "C" {
void* __real_malloc(std::size_t size);
void __real_free(void* block);
}

namespace {

std::size_t failingSize;
const std::function<bool()>* newObserver;

bool FailsNow() {
  if (newObserver == nullptr || recorder::Aside::Holds()) return false;
  const recorder::Aside aside;
  return (*newObserver)();
}

}  // namespace

void recorder::OnNew(const std::function<bool()>* observer) {
  newObserver = observer;
}

void recorder::FailNewOf(std::size_t size) {
  failingSize = size;
}

void* operator new(std::size_t size) {
  if (size == failingSize && size != 0) {
    failingSize = 0;
    throw std::bad_alloc();
  }
  if (FailsNow()) throw std::bad_alloc();
  void* block = __real_malloc(size != 0 ? size : 1);
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
  __real_free(block);
}

void operator delete(void* block, std::size_t) noexcept {
  __real_free(block);
}
