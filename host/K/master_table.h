// Where master pointers live: in blocks that stay where they are.
#ifndef K_MASTER_TABLE_H
#define K_MASTER_TABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "include/PXL_Types.h"

namespace k {

// A handle is the address of the first member. The size makes places in a
// block a matter of shifts.
struct alignas(32) Master {
  Ptr block = nullptr;
  std::uint64_t size = 0;
  bool live = false;
  bool locked = false;
  bool purgeable = false;
};

class MasterTable {
 public:
  // A master pointer of its own, never taken back. Throws std::bad_alloc.
  Master* Add();

  // The place of a master pointer, taken or not yet; null for any other address.
  // Nothing is read there.
  [[nodiscard]] Master* At(Handle handle) const;

  // In the order in which they were added.
  template <class Visit>
  void ForEach(Visit visit) {
    for (std::size_t i = 0; i < count_; ++i) visit((*blocks_[i / kPerBlock])[i % kPerBlock]);
  }

 private:
  // Each begins at a multiple of its size, so that an address tells its block.
  static constexpr std::size_t kPerBlock = 1024;
  struct alignas(kPerBlock * sizeof(Master)) Block : std::array<Master, kPerBlock> {};

  void AddBlock();

  std::vector<std::unique_ptr<Block>> blocks_;  // the oldest first
  std::vector<std::uintptr_t> addresses_;       // of the blocks, in order
  std::size_t count_ = 0;
};

}  // namespace k

#endif
