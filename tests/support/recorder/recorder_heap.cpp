// The heap under the module: its calls of malloc and free come here, since the
// tests are linked with these two names wrapped. Other callers' are passed on.
#include <cstdlib>
#include <cstring>

#include "tests/support/recorder/recorder.h"

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
  const std::size_t offset = Current().script.blockOffset;
  void* start = __real_malloc(offset + size);
  void* block = static_cast<char*>(start) + offset;
  std::memset(block, 0xA5, size);
  Current().Own(block, "heap", [start] { __real_free(start); });
  return block;
}

// Null is a call of the module's; a block it did not allocate is not. One of
// another kind stays where it is.
void __wrap_free(void* block) {
  if (block != nullptr && !Current().Owns(block)) return __real_free(block);
  Current().Enter("free", Text(block));
  if (Current().Owns(block, "heap")) Current().Release(block);
}
