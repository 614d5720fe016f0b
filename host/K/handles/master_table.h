// Where master pointers live: in blocks that stay where they are.
#ifndef K_MASTER_TABLE_H
#define K_MASTER_TABLE_H

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "PXL_Types.h"

namespace k {

// Who keeps a block where it is.
enum class Hold : std::uint8_t {
  Nobody,
  Caller,  // it is locked
  Store,   // it is being moved or purged
};

// A handle is the address of the first member. The size makes places in a
// table a matter of shifts. What is atomic is also looked at without the lock of
// the store.
struct alignas(32) Master {
  Ptr block = nullptr;
  std::uint64_t size = 0;
  std::atomic<bool> live = false;
  std::atomic<Hold> hold = Hold::Nobody;
  bool purgeable = false;
  Master* next = nullptr;  // in the queue that it waits in
};

class MasterTable {
 public:
  // A master pointer of its own, never taken back. Throws std::bad_alloc. One
  // thread at a time.
  Master* Add();

  // The place of a master pointer, taken or not yet; null for any other address.
  // Nothing is read there. Safe on any thread, also while another one adds.
  [[nodiscard]] Master* At(Handle handle) const;

  // In the order in which they were added. Not while another thread adds.
  template <typename Visit>
  void ForEach(Visit visit) {
    for (std::size_t i = 0; i < count_; ++i) visit((*blocks_[i / kPerBlock])[i % kPerBlock]);
  }

 private:
  // Each begins at a multiple of its size, so that an address tells its block.
  static constexpr std::size_t kPerBlock = 1024;
  struct alignas(kPerBlock * sizeof(Master)) Block : std::array<Master, kPerBlock> {};
  // The addresses of the blocks, in order.
  using Index = std::vector<std::uintptr_t>;

  void AddBlock();

  std::vector<std::unique_ptr<Block>> blocks_;  // the oldest first
  std::size_t count_ = 0;
  // One for each number of blocks there was: readers may still use an old one.
  std::vector<std::unique_ptr<const Index>> indexes_;
  std::atomic<const Index*> index_ = nullptr;
};

}  // namespace k

#endif
