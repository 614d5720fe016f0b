// The freed blocks that the pool keeps for re-use.
#ifndef K_KEPT_BLOCKS_H
#define K_KEPT_BLOCKS_H

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "host/K/pool/recycled_block.h"

namespace k {

// Live blocks by their addresses.
using LiveBlocks = std::unordered_map<const void*, std::unique_ptr<K_RecycledPtr>>;
// A block changes between live and kept as a node of that table, so that re-use
// needs no allocation.
using BlockNode = LiveBlocks::node_type;

// Not safe for use on several threads: the pool locks.
class KeptBlocks {
 public:
  // Throws std::bad_alloc, and frees the block, when it cannot be kept.
  void Add(BlockNode node);
  // Removes the newest block of the smallest capacity that fits a shape without
  // much waste; an empty node when there is none.
  BlockNode Take(const BlockShape& shape);
  // Removes the block that was kept the longest. There must be one.
  BlockNode TakeOldest();

  std::uint64_t Count() const { return count_; }
  std::uint64_t Bytes() const { return bytes_; }

 private:
  using Buckets = std::map<BlockShape, std::vector<BlockNode>>;

  BlockNode TakeFromBucket(Buckets::iterator bucket, std::size_t position);
  Buckets::iterator OldestBucket();

  Buckets buckets_;  // each the oldest block first
  std::uint64_t count_ = 0;
  std::uint64_t bytes_ = 0;
  std::uint64_t clock_ = 0;
};

}  // namespace k

#endif
