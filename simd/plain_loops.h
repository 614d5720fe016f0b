// The routines without vectors, which define the results of all others.
#ifndef SIMD_PLAIN_LOOPS_H
#define SIMD_PLAIN_LOOPS_H

#include <cstddef>
#include <cstdint>

namespace simd {

// The runtime's block move, which chooses its vectors itself.
void PlainCopy(void* destination, const void* source, std::size_t bytes);
void PlainFill32(void* destination, std::uint32_t value, std::size_t count);
void PlainReverseBytes32(void* words, std::size_t count);

}  // namespace simd

#endif
