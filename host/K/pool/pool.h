// The pool of recycled blocks.
#ifndef K_POOL_H
#define K_POOL_H

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

#include "K_host.h"
#include "host/K/pool/recycled_block.h"

namespace k {

// Safe on any thread.
class Pool {
 public:
  static Pool& Instance();

  // Throws std::bad_alloc when the budget or the system refuses. The content is
  // unset.
  K_RecycledPtrRef Allocate(std::uint32_t ownerCode, const char* label, std::uint64_t size);
  // False, and nothing done, when `base` is not a live block's address. Throws
  // std::bad_alloc when the block was freed but could not be kept.
  bool Free(void* base);
  bool Owns(const void* base) const;

  void SetLimit(std::uint64_t bytes);
  std::uint64_t Limit() const;
  // Bits of K_PoolCheck_*.
  void SetChecks(std::uint32_t checks);
  std::uint32_t Checks() const;
  // Unmaps kept blocks, the oldest first, until `bytes` are free or none is
  // left; gives the bytes freed.
  std::uint64_t GiveBack(std::uint64_t bytes);
  K_PoolStatistics Statistics() const;
  // Tells it of the bytes as they are.
  void TellTimeLine() const;

 private:
  using Blocks = std::unordered_map<const void*, std::unique_ptr<K_RecycledPtr>>;
  // A block changes between live and kept as a node of the table of live ones,
  // so that re-use costs no memory management.
  using Node = Blocks::node_type;
  using Bucket = std::vector<Node>;
  using Buckets = std::map<BlockShape, Bucket>;

  K_RecycledPtrRef Acquire(const BlockShape& shape);
  // One block to be unmapped when more than `keptBytes` are kept; else nothing.
  Node TakeOldest(std::uint64_t keptBytes);
  void EvictOverLimit();
  // These run under the lock; one of them lets go of it for a while.
  K_RecycledPtrRef MakeLive(Node node);
  Node TakeKept(const BlockShape& shape);
  Node TakeLive(const void* base);
  void CheckAndFill(K_RecycledPtr& block, std::unique_lock<std::mutex>& lock) const;
  bool IsWorthKeeping(const K_RecycledPtr& block) const;
  void Keep(Node node);
  Node TakeFromBucket(Buckets::iterator bucket, std::size_t position);
  Buckets::iterator OldestBucket();

  mutable std::mutex mutex_;
  Blocks live_;
  Buckets kept_;  // each the oldest first
  std::atomic<std::uint64_t> limit_ = K_DefaultPoolLimit;
  std::atomic<std::uint32_t> checks_ = 0;
  std::uint64_t clock_ = 0;
  K_PoolStatistics statistics_{};
};

}  // namespace k

#endif
