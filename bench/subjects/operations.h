// What the module and other libraries both can do to whole pictures.
#ifndef BENCH_SUBJECTS_OPERATIONS_H
#define BENCH_SUBJECTS_OPERATIONS_H

#include <cstdint>

#include "bench/subjects/picture.h"

namespace bench {

// Pixels have four channels, and are 32 bits where nothing else is said.
enum class Operation {
  From8to16,
  From8toF,
  From16to8,
  FromFto8,
  Copy,  // pixels of any depth
  Fill,  // with kFillWord; the source is not looked at
  HalveNearest,
  DoubleNearest,
  ReverseBytes  // of each pixel, in place: the source is not looked at
};

inline constexpr std::uint32_t kFillWord = 0x804020C0;

// The definition: plain loops.
void DoPlainly(Operation operation, const Picture& source, const Picture& destination);

}  // namespace bench

#endif
