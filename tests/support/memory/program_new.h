// The memory behind every `new` of the program: the library that is linked with
// it defines these, and decides which allocations fail.
#ifndef TESTS_SUPPORT_MEMORY_PROGRAM_NEW_H
#define TESTS_SUPPORT_MEMORY_PROGRAM_NEW_H

#include <cstddef>

namespace program_new {

// Null when the allocation fails; `size` is not 0.
void* Allocate(std::size_t size);
void Free(void* block);

}  // namespace program_new

#endif
