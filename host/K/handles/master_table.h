// The table of master pointers, in blocks that never move.
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

// Why a block must stay at its address.
enum class Hold : std::uint8_t {
  None,    // it may move
  Caller,  // it is locked
  Store,   // the store is moving or purging it
};

// A handle is the address of the first member. The alignment makes the index in
// the table a shift. Atomic members are also read without the lock of the store.
struct alignas(32) Master {
  Ptr block = nullptr;
  std::uint64_t size = 0;
  std::atomic<bool> live = false;
  std::atomic<Hold> hold = Hold::None;
  bool purgeable = false;
  Master* next = nullptr;  // in its MasterQueue
};

class MasterTable {
 public:
  // Adds a master pointer, which stays until the process ends. Throws
  // std::bad_alloc. One thread at a time.
  Master* Add();

  // The master pointer of a handle, added or not yet; null for any other address.
  // Reads nothing at the address. Safe on any thread, also during Add.
  [[nodiscard]] Master* At(Handle handle) const;

  // Visits in the order of addition. Not during Add on another thread.
  template <typename Visit>
  void ForEach(Visit visit) {
    for (std::size_t i = 0; i < count_; ++i) visit((*blocks_[i / kPerBlock])[i % kPerBlock]);
  }

 private:
  // Each block begins at a multiple of its size, so that the block of an address
  // can be computed.
  static constexpr std::size_t kPerBlock = 1024;
  struct alignas(kPerBlock * sizeof(Master)) Block : std::array<Master, kPerBlock> {};
  // The addresses of the blocks, in order.
  using Index = std::vector<std::uintptr_t>;

  void AddBlock();

  std::vector<std::unique_ptr<Block>> blocks_;  // the oldest first
  std::size_t count_ = 0;
  // All versions of the index: readers may still use an old one.
  std::vector<std::unique_ptr<const Index>> indexes_;
  std::atomic<const Index*> index_ = nullptr;
};

}  // namespace k

#endif
