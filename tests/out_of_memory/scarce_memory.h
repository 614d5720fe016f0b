// Makes memory run out on demand, for all code of the program: malloc, calloc
// and every `new`.
#ifndef TESTS_OUT_OF_MEMORY_SCARCE_MEMORY_H
#define TESTS_OUT_OF_MEMORY_SCARCE_MEMORY_H

#include <cstdint>

namespace scarce {

// From now on the first so many allocations succeed, and then so many fail.
void Begin(std::int64_t successes, std::int64_t failures);
// Back to plenty. Gives the allocations that were tried.
std::int64_t End();
// How many of them failed.
std::int64_t Failures();

// What is allocated and not freed.
std::int64_t LiveBlocks();

// For as long as one lives nothing fails, and nothing is counted as tried: what
// a test does within the calls that it tests.
class Plenty {
 public:
  Plenty();
  ~Plenty();
  Plenty(const Plenty&) = delete;
  Plenty& operator=(const Plenty&) = delete;
};

inline constexpr std::int64_t ALL = INT64_MAX;

}  // namespace scarce

#endif
