#include "host/K/pool/pool.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <utility>

#include "host/K/events/time_line.h"
#include "host/K/pool/block_checks.h"
#include "host/K/system/poison.h"
#include "host/K/system/virtual_memory.h"
#include "host/immortal.h"

namespace k {
namespace {

// More than the budget lets through on any system, yet small enough to be
// rounded up.
constexpr std::uint64_t kTooMuch = std::uint64_t{1} << 49;
constexpr std::uint32_t kMargins = K_PoolCheck_GUARDS | K_PoolCheck_FENCES;
constexpr std::uint32_t kAllChecks = kMargins | K_PoolCheck_FILL;

// Made while the library is loaded: there may be no memory for it later.
[[maybe_unused]] const Pool& kLoadedPool = Pool::Instance();

std::uint64_t RoundUp(std::uint64_t size, std::uint64_t step) {
  return std::max((size + step - 1) / step, std::uint64_t{1}) * step;
}

// Eight size classes to the doubling, whole pages each: at most an eighth of a
// block is waste, and frames of nearly the same size share a class.
std::uint64_t SizeClass(std::uint64_t size) {
  return RoundUp(size, std::max(std::bit_floor(size) / 8, PageSize()));
}

// Margins are to lie close to the end of what was asked for.
BlockShape ShapeFor(std::uint64_t size, std::uint32_t checks) {
  const std::uint32_t margins = checks & kMargins;
  return {margins, margins != 0 ? RoundUp(size, PageSize()) : SizeClass(size)};
}

// The largest kept block that is still given out for a shape.
std::uint64_t LargestFit(const BlockShape& shape) {
  return shape.margins != 0 ? shape.capacity : shape.capacity + shape.capacity / 4;
}

}  // namespace

Pool& Pool::Instance() {
  // Never destroyed: blocks are still freed while the process ends.
  static Immortal<Pool> pool;
  return *pool;
}

K_RecycledPtrRef Pool::Allocate(std::uint32_t ownerCode, const char* label, std::uint64_t size) {
  K_RecycledPtr* ref = Acquire(ShapeFor(std::min(size, kTooMuch), checks_));
  CheckFilled(*ref);
  ref->SetOwner(ownerCode, label);
  ref->size = size;
  WriteGuards(*ref);
  return ref;
}

K_RecycledPtrRef Pool::Acquire(const BlockShape& shape) {
  {
    const std::lock_guard lock(mutex_);
    if (Node kept = TakeKept(shape)) return MakeLive(std::move(kept));
    ++statistics_.misses;
  }
  auto block = std::make_unique<K_RecycledPtr>(shape);
  Blocks alone;
  const auto [made, _] = alone.emplace(block->base, std::move(block));
  Node node = alone.extract(made);
  const std::lock_guard lock(mutex_);
  return MakeLive(std::move(node));
}

K_RecycledPtrRef Pool::MakeLive(Node node) {
  K_RecycledPtr* ref = node.mapped().get();
  live_.insert(std::move(node));
  ++statistics_.liveBlocks;
  statistics_.liveBytes += ref->shape.capacity;
  statistics_.peakBytes =
      std::max(statistics_.peakBytes, statistics_.liveBytes + statistics_.keptBytes);
  TellBlocks(statistics_.liveBytes, statistics_.keptBytes);
  return ref;
}

// The newest block of the smallest capacity that fits without much waste.
Pool::Node Pool::TakeKept(const BlockShape& shape) {
  auto found = kept_.lower_bound(shape);
  while (found != kept_.end() && found->second.empty()) ++found;
  const BlockShape largest{shape.margins, LargestFit(shape)};
  if (found == kept_.end() || largest < found->first) return {};
  ++statistics_.hits;
  return TakeFromBucket(found, found->second.size() - 1);
}

// One lock for the whole of a plain free. What is not kept is unmapped after it.
bool Pool::Free(void* base) {
  Node node;
  bool overLimit = false;
  {
    std::unique_lock lock(mutex_);
    node = TakeLive(base);
    if (node.empty()) return false;
    CheckAndFill(*node.mapped(), lock);
    if (IsWorthKeeping(*node.mapped())) Keep(std::exchange(node, {}));
    TellBlocks(statistics_.liveBytes, statistics_.keptBytes);
    overLimit = statistics_.keptBytes > limit_;
  }
  if (overLimit) EvictOverLimit();
  return true;
}

Pool::Node Pool::TakeLive(const void* base) {
  Node node = live_.extract(base);
  if (node.empty()) return node;
  --statistics_.liveBlocks;
  statistics_.liveBytes -= node.mapped()->shape.capacity;
  return node;
}

// All of a block's memory is touched: other threads need not wait for that.
void Pool::CheckAndFill(K_RecycledPtr& block, std::unique_lock<std::mutex>& lock) const {
  const bool fills = (checks_ & K_PoolCheck_FILL) != 0;
  if (block.shape.margins == 0 && !fills) return;
  lock.unlock();
  CheckGuards(block);
  if (fills) FillFreed(block);
  lock.lock();
}

bool Pool::IsWorthKeeping(const K_RecycledPtr& block) const {
  return block.shape.margins == (checks_ & kMargins) && block.shape.capacity <= limit_;
}

void Pool::Keep(Node node) {
  K_RecycledPtr& block = *node.mapped();
  block.age = ++clock_;
  PoisonMemory(block.base, block.shape.capacity);
  kept_[block.shape].push_back(std::move(node));
  ++statistics_.keptBlocks;
  statistics_.keptBytes += block.shape.capacity;
}

Pool::Node Pool::TakeFromBucket(Buckets::iterator bucket, std::size_t position) {
  auto& [shape, nodes] = *bucket;
  Node node = std::move(nodes[position]);
  nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(position));
  --statistics_.keptBlocks;
  statistics_.keptBytes -= shape.capacity;
  UnpoisonMemory(node.mapped()->base, shape.capacity);
  // Plain shapes are few, and their empty buckets save memory management.
  if (shape.margins != 0 && nodes.empty()) kept_.erase(bucket);
  return node;
}

Pool::Buckets::iterator Pool::OldestBucket() {
  auto oldest = kept_.end();
  std::uint64_t age = std::numeric_limits<std::uint64_t>::max();
  for (auto bucket = kept_.begin(); bucket != kept_.end(); ++bucket) {
    if (bucket->second.empty() || bucket->second.front().mapped()->age > age) continue;
    oldest = bucket;
    age = bucket->second.front().mapped()->age;
  }
  return oldest;
}

Pool::Node Pool::TakeOldest(std::uint64_t keptBytes) {
  const std::lock_guard lock(mutex_);
  if (statistics_.keptBytes <= keptBytes) return {};
  Node oldest = TakeFromBucket(OldestBucket(), 0);
  TellBlocks(statistics_.liveBytes, statistics_.keptBytes);
  return oldest;
}

// Block by block: unmapping is slow and must not hold up other threads, and a
// list of what to unmap would need memory.
void Pool::EvictOverLimit() {
  while (const Node oldest = TakeOldest(limit_)) CheckFilled(*oldest.mapped());
}

void Pool::SetLimit(std::uint64_t bytes) {
  limit_ = bytes;
  EvictOverLimit();
}

std::uint64_t Pool::Limit() const {
  return limit_;
}

// Kept blocks of another shape would wait for nobody.
void Pool::SetChecks(std::uint32_t checks) {
  const std::uint32_t before = checks_.exchange(checks & kAllChecks);
  if ((before & kMargins) != (checks & kMargins)) {
    GiveBack(std::numeric_limits<std::uint64_t>::max());
  }
}

std::uint32_t Pool::Checks() const {
  return checks_;
}

std::uint64_t Pool::GiveBack(std::uint64_t bytes) {
  std::uint64_t freed = 0;
  while (freed < bytes) {
    const Node oldest = TakeOldest(0);
    if (oldest.empty()) break;
    CheckFilled(*oldest.mapped());
    freed += oldest.mapped()->shape.capacity;
  }
  return freed;
}

bool Pool::Owns(const void* base) const {
  const std::lock_guard lock(mutex_);
  return live_.contains(base);
}

void Pool::TellTimeLine() const {
  const std::lock_guard lock(mutex_);
  TellBlocks(statistics_.liveBytes, statistics_.keptBytes);
}

K_PoolStatistics Pool::Statistics() const {
  const std::lock_guard lock(mutex_);
  return statistics_;
}

}  // namespace k
