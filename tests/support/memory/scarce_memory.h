// Makes memory run out on demand, for all code of the program: malloc, calloc
// and every `new`. Shared libraries are reached by their `new` alone.
#ifndef TESTS_SUPPORT_MEMORY_SCARCE_MEMORY_H
#define TESTS_SUPPORT_MEMORY_SCARCE_MEMORY_H

#include <cstdint>

namespace scarce {

inline constexpr std::int64_t kAll = INT64_MAX;

// From now on the first `successes` allocations of this thread succeed, and the
// next `failures` fail.
void Begin(std::int64_t successes, std::int64_t failures = kAll);
// No allocation fails any more.
void End();
// How many allocations failed since the last call of Begin.
std::int64_t Failures();

// The blocks that are allocated and not freed, of all threads.
std::int64_t LiveBlocks();

}  // namespace scarce

#endif
