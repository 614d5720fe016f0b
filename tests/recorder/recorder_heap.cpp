// The heap under the module: its calls of malloc and free come here, since the
// tests are linked with these two names wrapped. Other callers' are passed on.
#include <cstdlib>
#include <cstring>

#include "tests/recorder/recorder.h"

using recorder::Current;
using recorder::Text;

extern "C" {
void* __real_malloc(std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void __wrap_free(void* block);
}

void* __wrap_malloc(std::size_t size) {
  if (Current().Enter("malloc", Text(size))) return nullptr;
  void* block = __real_malloc(size);
  std::memset(block, 0xA5, size);
  Current().Own(block, "heap", [block] { __real_free(block); });
  return block;
}

// Null is a call of the module's; a block it did not allocate is not.
void __wrap_free(void* block) {
  if (block != nullptr && !Current().Owns(block)) return __real_free(block);
  Current().Enter("free", Text(block));
  Current().Disown(block);
  __real_free(block);
}
