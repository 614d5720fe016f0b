// Runs of 32-bit words: filling, and reversing the bytes of each word, with the
// best routines of the processor. Addresses need no alignment.
#ifndef SIMD_PIXELS32_H
#define SIMD_PIXELS32_H

#include <cstddef>
#include <cstdint>

namespace simd {

// Stores `value`, in the machine's byte order, `count` times from `destination`
// on.
void Fill32(void* destination, std::uint32_t value, std::size_t count);

// Reverses the four bytes of each of `count` words in place.
void ReverseBytes32(void* words, std::size_t count);

}  // namespace simd

#endif
