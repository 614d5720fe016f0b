// The freed blocks that the pool keeps for re-use.
#include "host/K/pool/kept_blocks.h"

#include <limits>
#include <utility>

#include "host/K/system/poison.h"

namespace k {
namespace {

// The largest kept block that may serve a shape.
std::uint64_t LargestFit(const BlockShape& shape) {
  return shape.margins != 0 ? shape.capacity : shape.capacity + shape.capacity / 4;
}

}  // namespace

void KeptBlocks::Add(BlockNode node) {
  K_RecycledPtr& block = *node.mapped();
  const BlockShape shape = block.shape;
  block.age = ++clock_;
  PoisonMemory(block.base, shape.capacity);
  buckets_[shape].push_back(std::move(node));
  ++count_;
  bytes_ += shape.capacity;
}

BlockNode KeptBlocks::Take(const BlockShape& shape) {
  auto found = buckets_.lower_bound(shape);
  while (found != buckets_.end() && found->second.empty()) ++found;
  const BlockShape largest{shape.margins, LargestFit(shape)};
  if (found == buckets_.end() || largest < found->first) return {};
  return TakeFromBucket(found, found->second.size() - 1);
}

BlockNode KeptBlocks::TakeOldest() {
  return TakeFromBucket(OldestBucket(), 0);
}

BlockNode KeptBlocks::TakeFromBucket(Buckets::iterator bucket, std::size_t position) {
  auto& [shape, nodes] = *bucket;
  BlockNode node = std::move(nodes[position]);
  nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(position));
  --count_;
  bytes_ -= shape.capacity;
  UnpoisonMemory(node.mapped()->base, shape.capacity);
  // Plain shapes are few: keeping their empty buckets saves allocations.
  if (shape.margins != 0 && nodes.empty()) buckets_.erase(bucket);
  return node;
}

KeptBlocks::Buckets::iterator KeptBlocks::OldestBucket() {
  auto oldest = buckets_.end();
  std::uint64_t age = std::numeric_limits<std::uint64_t>::max();
  for (auto bucket = buckets_.begin(); bucket != buckets_.end(); ++bucket) {
    if (bucket->second.empty() || bucket->second.front().mapped()->age > age) continue;
    oldest = bucket;
    age = bucket->second.front().mapped()->age;
  }
  return oldest;
}

}  // namespace k
