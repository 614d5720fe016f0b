// The pool of recycled blocks.
#ifndef K_POOL_H
#define K_POOL_H

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "K_host.h"

// A block of the pool: what K_AllocateRecycledPtr gives a reference to. Nothing
// of it lies in the memory that the caller gets.
struct K_RecycledPtr {
  // Takes the memory from the budget and from the system, for as long as the
  // record lives. Throws std::bad_alloc when either refuses.
  explicit K_RecycledPtr(std::uint64_t bytes);
  K_RecycledPtr(const K_RecycledPtr&) = delete;
  K_RecycledPtr& operator=(const K_RecycledPtr&) = delete;
  ~K_RecycledPtr();

  void* const base;
  const std::uint64_t capacity;
  std::uint32_t ownerCode = 0;
  std::string label;
  std::uint64_t age = 0;  // of kept blocks: the lower, the longer kept
};

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
  // Unmaps kept blocks, the oldest first, until `bytes` are free or none is
  // left; gives the bytes freed.
  std::uint64_t GiveBack(std::uint64_t bytes);
  K_PoolStatistics Statistics() const;

 private:
  using Blocks = std::unordered_map<const void*, std::unique_ptr<K_RecycledPtr>>;
  // A block changes between live and kept as a node of the table of live ones,
  // so that re-use costs no memory management.
  using Node = Blocks::node_type;
  using Bucket = std::vector<Node>;

  K_RecycledPtrRef Acquire(std::uint64_t capacity);
  // One block to be unmapped when at least `keptBytes` are kept; else nothing.
  Node TakeOldest(std::uint64_t keptBytes);
  void EvictOverLimit();
  // These run under the lock.
  K_RecycledPtrRef MakeLive(Node node);
  Node TakeKept(std::uint64_t capacity);
  Node TakeLive(const void* base);
  void Keep(Node node);
  Bucket* OldestBucket();
  Node TakeFromBucket(Bucket& bucket, std::size_t position);

  mutable std::mutex mutex_;
  Blocks live_;
  std::map<std::uint64_t, Bucket> kept_;  // by capacity, each the oldest first
  std::atomic<std::uint64_t> limit_ = K_DefaultPoolLimit;
  std::uint64_t clock_ = 0;
  K_PoolStatistics statistics_{};
};

}  // namespace k

#endif
