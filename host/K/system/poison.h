// Marks memory that must not be touched for a while, where the build has a
// checker for that (AddressSanitizer). Costs nothing elsewhere.
#ifndef K_POISON_H
#define K_POISON_H

#include <cstdint>

#if defined(__SANITIZE_ADDRESS__)
#define K_POISONS_MEMORY 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define K_POISONS_MEMORY 1
#endif
#endif

#ifdef K_POISONS_MEMORY

#include <sanitizer/asan_interface.h>

namespace k {

inline void PoisonMemory(const void* base, std::uint64_t size) {
  __asan_poison_memory_region(base, size);
}
inline void UnpoisonMemory(const void* base, std::uint64_t size) {
  __asan_unpoison_memory_region(base, size);
}

}  // namespace k

#else

namespace k {

inline void PoisonMemory(const void*, std::uint64_t) {
}
inline void UnpoisonMemory(const void*, std::uint64_t) {
}

}  // namespace k

#endif

#endif
