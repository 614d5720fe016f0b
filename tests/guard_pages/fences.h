// The interface of the library of fences, looked up at run time.
#ifndef TESTS_GUARD_PAGES_FENCES_H
#define TESTS_GUARD_PAGES_FENCES_H

// Whether the address is in a block with fences.
using IsFencedFunction = bool(const void* address);
inline constexpr const char* kIsFenced = "IsFenced";

#endif
