// The routines without vectors.
#include "simd/plain_loops.h"

#include <cstring>

namespace simd {

void PlainCopy(void* destination, const void* source, std::size_t bytes) {
  std::memmove(destination, source, bytes);
}

void PlainFill32(void* destination, std::uint32_t value, std::size_t count) {
  auto* bytes = static_cast<unsigned char*>(destination);
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(bytes + i * sizeof value, &value, sizeof value);
  }
}

void PlainReverseBytes32(void* words, std::size_t count) {
  auto* bytes = static_cast<unsigned char*>(words);
  for (std::size_t i = 0; i < count; ++i, bytes += sizeof(std::uint32_t)) {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    word = word << 24 | (word << 8 & 0x00FF0000U) | (word >> 8 & 0x0000FF00U) | word >> 24;
    std::memcpy(bytes, &word, sizeof word);
  }
}

}  // namespace simd
