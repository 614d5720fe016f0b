// Operations on whole pictures that both the module and other libraries have.
#ifndef BENCH_SUBJECTS_OPERATIONS_H
#define BENCH_SUBJECTS_OPERATIONS_H

#include <cstdint>

#include "bench/subjects/picture.h"

namespace bench {

// Pixels have four channels, and 32 bits unless stated otherwise.
enum class Operation {
  From8to16,
  From8toF,
  From16to8,
  FromFto8,
  Copy,  // pixels of any depth
  Fill,  // with kFillWord; does not read the source
  HalveNearest,
  DoubleNearest,
  ReverseBytes  // of each pixel, in place; does not read the source
};

inline constexpr std::uint32_t kFillWord = 0x804020C0;

// The definition: plain loops.
void DoPlainly(Operation operation, const Picture& source, const Picture& destination);

}  // namespace bench

#endif
