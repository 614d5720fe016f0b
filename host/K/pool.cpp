#include "pool.h"

#include <algorithm>
#include <bit>
#include <new>
#include <utility>

#include "budget.h"
#include "poison.h"
#include "virtual_memory.h"

namespace {

void* MapBooked(std::uint64_t bytes) {
  if (!k::ReserveMemory(bytes)) throw std::bad_alloc();
  void* base = k::MapMemory(bytes);
  if (base != nullptr) return base;
  k::ReleaseMemory(bytes);
  throw std::bad_alloc();
}

}  // namespace

K_RecycledPtr::K_RecycledPtr(std::uint64_t bytes) : base(MapBooked(bytes)), capacity(bytes) {
}

K_RecycledPtr::~K_RecycledPtr() {
  k::UnpoisonMemory(base, capacity);
  k::UnmapMemory(base, capacity);
  k::ReleaseMemory(capacity);
}

namespace k {
namespace {

constexpr std::uint64_t kPage = 4096;
constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 47;

// Eight size classes to the doubling, whole pages each: at most an eighth of a
// block is waste, and frames of nearly the same size share a class.
std::uint64_t SizeClass(std::uint64_t size) {
  const std::uint64_t step = std::max(std::bit_floor(size) / 8, kPage);
  return std::max((size + step - 1) / step, std::uint64_t{1}) * step;
}

// The largest kept block that is still given out for a size class.
std::uint64_t LargestFit(std::uint64_t sizeClass) {
  return sizeClass + sizeClass / 4;
}

}  // namespace

Pool& Pool::Instance() {
  // Never destroyed: blocks are still freed while the process ends.
  static auto* const pool = new Pool;
  return *pool;
}

K_RecycledPtrRef Pool::Allocate(std::uint32_t ownerCode, const char* label, std::uint64_t size) {
  if (size > kMostBytes) throw std::bad_alloc();
  K_RecycledPtr* ref = Acquire(SizeClass(size));
  ref->ownerCode = ownerCode;
  ref->label = label != nullptr ? label : "";
  return ref;
}

K_RecycledPtrRef Pool::Acquire(std::uint64_t capacity) {
  {
    const std::lock_guard lock(mutex_);
    if (Node kept = TakeKept(capacity)) return MakeLive(std::move(kept));
    ++statistics_.misses;
  }
  auto block = std::make_unique<K_RecycledPtr>(capacity);
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
  statistics_.liveBytes += ref->capacity;
  statistics_.peakBytes =
      std::max(statistics_.peakBytes, statistics_.liveBytes + statistics_.keptBytes);
  return ref;
}

// The newest block of the smallest capacity that fits without much waste.
Pool::Node Pool::TakeKept(std::uint64_t capacity) {
  auto found = kept_.lower_bound(capacity);
  while (found != kept_.end() && found->second.empty()) ++found;
  if (found == kept_.end() || found->first > LargestFit(capacity)) return {};
  ++statistics_.hits;
  Node node = TakeFromBucket(found->second, found->second.size() - 1);
  UnpoisonMemory(node.mapped()->base, node.mapped()->capacity);
  return node;
}

bool Pool::Free(void* base) {
  Node tooLarge;  // unmapped after the lock
  {
    const std::lock_guard lock(mutex_);
    Node node = TakeLive(base);
    if (node.empty()) return false;
    if (node.mapped()->capacity > limit_) {
      tooLarge = std::move(node);
    } else {
      Keep(std::move(node));
    }
  }
  EvictOverLimit();
  return true;
}

Pool::Node Pool::TakeLive(const void* base) {
  Node node = live_.extract(base);
  if (node.empty()) return node;
  --statistics_.liveBlocks;
  statistics_.liveBytes -= node.mapped()->capacity;
  return node;
}

void Pool::Keep(Node node) {
  K_RecycledPtr& block = *node.mapped();
  block.age = ++clock_;
  PoisonMemory(block.base, block.capacity);
  kept_[block.capacity].push_back(std::move(node));
  ++statistics_.keptBlocks;
  statistics_.keptBytes += block.capacity;
}

Pool::Node Pool::TakeFromBucket(Bucket& bucket, std::size_t position) {
  Node node = std::move(bucket[position]);
  bucket.erase(bucket.begin() + static_cast<std::ptrdiff_t>(position));
  --statistics_.keptBlocks;
  statistics_.keptBytes -= node.mapped()->capacity;
  return node;
}

Pool::Bucket* Pool::OldestBucket() {
  Bucket* oldest = nullptr;
  std::uint64_t age = 0;
  for (auto& [capacity, bucket] : kept_) {
    if (bucket.empty()) continue;
    const std::uint64_t candidate = bucket.front().mapped()->age;
    if (oldest != nullptr && candidate > age) continue;
    oldest = &bucket;
    age = candidate;
  }
  return oldest;
}

Pool::Node Pool::TakeOldest(std::uint64_t keptBytes) {
  const std::lock_guard lock(mutex_);
  if (statistics_.keptBlocks == 0 || statistics_.keptBytes < keptBytes) return {};
  return TakeFromBucket(*OldestBucket(), 0);
}

// Block by block: unmapping is slow and must not hold up other threads, and a
// list of what to unmap would need memory.
void Pool::EvictOverLimit() {
  while (TakeOldest(limit_ + 1)) {
  }
}

void Pool::SetLimit(std::uint64_t bytes) {
  limit_ = std::min(bytes, kMostBytes);
  EvictOverLimit();
}

std::uint64_t Pool::GiveBack(std::uint64_t bytes) {
  std::uint64_t freed = 0;
  while (freed < bytes) {
    const Node oldest = TakeOldest(0);
    if (oldest.empty()) break;
    freed += oldest.mapped()->capacity;
  }
  return freed;
}

bool Pool::Owns(const void* base) const {
  const std::lock_guard lock(mutex_);
  return live_.contains(base);
}

K_PoolStatistics Pool::Statistics() const {
  const std::lock_guard lock(mutex_);
  return statistics_;
}

}  // namespace k
