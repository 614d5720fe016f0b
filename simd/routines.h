// Copies, fills and byte swaps for each level of processor. Addresses need no
// alignment; no routine reads or writes a byte outside its ranges.
#ifndef SIMD_ROUTINES_H
#define SIMD_ROUTINES_H

#include <cstddef>
#include <cstdint>

#include "simd/processor.h"

namespace simd {

struct Routines {
  // Equals memmove, also where the two overlap. Streaming stores bypass the
  // caches: the caller ends with FinishStreaming().
  void (*copy)(void* destination, const void* source, std::size_t bytes);
  void (*streamingCopy)(void* destination, const void* source, std::size_t bytes);

  // Stores `value`, in the machine's byte order, `count` times.
  void (*fill32)(void* destination, std::uint32_t value, std::size_t count);
  void (*streamingFill32)(void* destination, std::uint32_t value, std::size_t count);

  // Reverses the four bytes of each of `count` words in place.
  void (*reverseBytes32)(void* words, std::size_t count);
};

// Those of a level that the processor has; the baseline's are plain loops.
const Routines& RoutinesOf(Level level);

// Those of this processor's level.
const Routines& BestRoutines();

}  // namespace simd

#endif
