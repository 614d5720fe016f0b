// The pool of recycled blocks.
#ifndef K_POOL_H
#define K_POOL_H

#include <atomic>
#include <cstdint>
#include <mutex>

#include "K_host.h"
#include "host/K/pool/kept_blocks.h"
#include "host/K/pool/recycled_block.h"

namespace k {

// Safe on any thread.
class Pool {
 public:
  static Pool& Instance();

  // Returns a block of unset bytes; Free releases it. Throws std::bad_alloc when
  // the budget or the system refuses.
  K_RecycledPtrRef Allocate(std::uint32_t ownerCode, const char* label, std::uint64_t size);
  // Returns false, and does nothing, when `base` is not the address of a live
  // block. Throws std::bad_alloc when the block was freed but could not be kept.
  bool Free(void* base);
  bool Owns(const void* base) const;

  void SetLimit(std::uint64_t bytes);
  std::uint64_t Limit() const;
  // Bits of K_PoolCheck_*.
  void SetChecks(std::uint32_t checks);
  std::uint32_t Checks() const;
  // Unmaps kept blocks, the oldest first, until `bytes` are free or none is
  // left. Returns the bytes freed.
  std::uint64_t ReleaseKept(std::uint64_t bytes);
  K_PoolStatistics Statistics() const;
  // Notes the bytes of all blocks in the time line.
  void NoteTotals() const;

 private:
  K_RecycledPtrRef Acquire(const BlockShape& shape);
  // Removes one block when more than `keptBytes` are kept, for the caller to
  // unmap; an empty node otherwise.
  BlockNode TakeOldest(std::uint64_t keptBytes);
  void EvictOverLimit();
  // These run under the lock; CheckAndFill releases it for some time.
  K_RecycledPtrRef MakeLive(BlockNode node);
  BlockNode TakeKept(const BlockShape& shape);
  BlockNode TakeLive(const void* base);
  void CheckAndFill(K_RecycledPtr& block, std::unique_lock<std::mutex>& lock) const;
  bool IsWorthKeeping(const K_RecycledPtr& block) const;
  void NoteBytes() const;

  mutable std::mutex mutex_;
  LiveBlocks live_;
  KeptBlocks kept_;
  std::atomic<std::uint64_t> limit_ = K_DefaultPoolLimit;
  std::atomic<std::uint32_t> checks_ = 0;
  K_PoolStatistics statistics_{};  // without those of the kept blocks
};

}  // namespace k

#endif
