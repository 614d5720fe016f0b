// Marks memory as not accessible, in builds with AddressSanitizer. Does nothing in
// other builds.
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
