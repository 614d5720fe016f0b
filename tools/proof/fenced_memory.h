// Memory between two fences: a read or write of a byte before or behind it crashes.
#ifndef TOOLS_PROOF_FENCED_MEMORY_H
#define TOOLS_PROOF_FENCED_MEMORY_H

#include <cstddef>

namespace proof {

class FencedMemory {
 public:
  // Allocates at least that many bytes, all zero. Throws std::bad_alloc.
  explicit FencedMemory(std::size_t bytes);
  FencedMemory(const FencedMemory&) = delete;
  FencedMemory& operator=(const FencedMemory&) = delete;
  ~FencedMemory();

  // Both are multiples of 64, and adjoin the fences.
  [[nodiscard]] unsigned char* begin() const { return begin_; }
  [[nodiscard]] unsigned char* end() const { return end_; }

 private:
  unsigned char* begin_ = nullptr;
  unsigned char* end_ = nullptr;
};

}  // namespace proof

#endif
