// The blocks of the pool.
#ifndef K_RECYCLED_BLOCK_H
#define K_RECYCLED_BLOCK_H

#include <cstdint>
#include <tuple>

#include "K_host.h"

namespace k {

// The layout of a block, constant during its life. `margins` has the bits
// K_PoolCheck_GUARDS and K_PoolCheck_FENCES: a page on either side for each that
// is set, the fences outermost.
struct BlockShape {
  std::uint32_t margins;
  std::uint64_t capacity;  // whole pages, without the margins
  // By margins first, so that a larger block of the same margins comes after.
  bool operator<(const BlockShape& other) const {
    return std::tie(margins, capacity) < std::tie(other.margins, other.capacity);
  }
};

}  // namespace k

// The record of a block, to which K_AllocateRecycledPtr returns a reference. It is
// stored outside of the block's memory.
struct K_RecycledPtr {
  // Books and maps the memory until the record is destroyed. Throws std::bad_alloc
  // when the budget or the system refuses.
  explicit K_RecycledPtr(const k::BlockShape& blockShape);
  K_RecycledPtr(const K_RecycledPtr&) = delete;
  K_RecycledPtr& operator=(const K_RecycledPtr&) = delete;
  ~K_RecycledPtr();

  // Allocates nothing: a longer label is cut.
  void SetOwner(std::uint32_t code, const char* text);

  const k::BlockShape shape;
  char* const base;
  std::uint64_t size = 0;  // as requested
  std::uint32_t ownerCode = 0;
  char label[32] = "";
  std::uint64_t age = 0;  // of kept blocks: lower when kept longer
  bool filled = false;    // with K_PoolFreedPattern
};

#endif
