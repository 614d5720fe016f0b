// What the library of fences tells those who find it loaded.
#ifndef TESTS_GUARD_PAGES_FENCES_H
#define TESTS_GUARD_PAGES_FENCES_H

// Whether the address is in a block with fences.
using IsFencedFunction = bool(const void* address);
inline constexpr const char* IS_FENCED = "IsFenced";

#endif
