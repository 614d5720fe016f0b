// The blocks that the pool hands out.
#ifndef K_RECYCLED_BLOCK_H
#define K_RECYCLED_BLOCK_H

#include <cstdint>
#include <tuple>

#include "K_host.h"

namespace k {

// What a block is like, and will be as long as it lives. The margins are those
// of the bits K_PoolCheck_GUARDS and K_PoolCheck_FENCES that are set: a page on
// either side for each, the fences outermost.
struct BlockShape {
  std::uint32_t margins;
  std::uint64_t capacity;  // whole pages, without the margins
  // By margins first, so that a larger block of the same margins comes after.
  bool operator<(const BlockShape& other) const {
    return std::tie(margins, capacity) < std::tie(other.margins, other.capacity);
  }
};

}  // namespace k

// What K_AllocateRecycledPtr gives a reference to. Nothing of it lies in the
// memory that the caller gets.
struct K_RecycledPtr {
  // Takes the memory from the budget and from the system, for as long as the
  // record lives. Throws std::bad_alloc when either refuses.
  explicit K_RecycledPtr(const k::BlockShape& blockShape);
  K_RecycledPtr(const K_RecycledPtr&) = delete;
  K_RecycledPtr& operator=(const K_RecycledPtr&) = delete;
  ~K_RecycledPtr();

  // Needs no memory: a longer label is cut.
  void SetOwner(std::uint32_t code, const char* text);

  const k::BlockShape shape;
  char* const base;
  std::uint64_t size = 0;  // what was asked for
  std::uint32_t ownerCode = 0;
  char label[32] = "";
  std::uint64_t age = 0;  // of kept blocks: the lower, the longer kept
  bool filled = false;    // with K_PoolFreedPattern
};

#endif
