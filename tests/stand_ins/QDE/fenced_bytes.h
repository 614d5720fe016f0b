// Bytes that end where accessible memory ends, so that a read beyond them ends the
// program.
#ifndef TESTS_STAND_INS_QDE_FENCED_BYTES_H
#define TESTS_STAND_INS_QDE_FENCED_BYTES_H

#include <cstddef>
#include <cstdint>

#include "tools/proof/fenced_memory.h"

class FencedBytes {
 public:
  explicit FencedBytes(std::size_t size) : memory_(size), begin_(memory_.end() - size) {}

  [[nodiscard]] std::uint8_t* begin() { return begin_; }

 private:
  proof::FencedMemory memory_;
  std::uint8_t* begin_;
};

#endif
