// The `new` under the module, which can be made to fail.
#include <cstdlib>

#include "tests/support/memory/program_new.h"
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

void* program_new::Allocate(std::size_t size) {
  if (size == failingSize) {
    failingSize = 0;
    return nullptr;
  }
  return FailsNow() ? nullptr : __real_malloc(size);
}

void program_new::Free(void* block) {
  __real_free(block);
}
