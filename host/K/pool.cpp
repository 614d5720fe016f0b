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
  Block block = Acquire(SizeClass(size));
  block->ownerCode = ownerCode;
  block->label = label != nullptr ? label : "";
  return MakeLive(std::move(block));
}

Pool::Block Pool::Acquire(std::uint64_t capacity) {
  if (Block kept = TakeKept(capacity)) return kept;
  return std::make_unique<K_RecycledPtr>(capacity);
}

// The newest block of the smallest capacity that fits without much waste.
Pool::Block Pool::TakeKept(std::uint64_t capacity) {
  const std::lock_guard lock(mutex_);
  auto found = kept_.lower_bound(capacity);
  while (found != kept_.end() && found->second.empty()) ++found;
  if (found == kept_.end() || found->first > LargestFit(capacity)) {
    ++statistics_.misses;
    return nullptr;
  }
  Block block = std::move(found->second.back());
  found->second.pop_back();
  ++statistics_.hits;
  --statistics_.keptBlocks;
  statistics_.keptBytes -= block->capacity;
  UnpoisonMemory(block->base, block->capacity);
  return block;
}

K_RecycledPtrRef Pool::MakeLive(Block block) {
  K_RecycledPtr* ref = block.get();
  const std::lock_guard lock(mutex_);
  live_.emplace(ref->base, std::move(block));
  ++statistics_.liveBlocks;
  statistics_.liveBytes += ref->capacity;
  statistics_.peakBytes =
      std::max(statistics_.peakBytes, statistics_.liveBytes + statistics_.keptBytes);
  return ref;
}

bool Pool::Free(void* base) {
  Block block = TakeLive(base);
  if (block == nullptr) return false;
  // What falls out of the pool is unmapped here, outside the lock.
  Keep(std::move(block));
  return true;
}

Pool::Block Pool::TakeLive(void* base) {
  const std::lock_guard lock(mutex_);
  const auto found = live_.find(base);
  if (found == live_.end()) return nullptr;
  Block block = std::move(found->second);
  live_.erase(found);
  --statistics_.liveBlocks;
  statistics_.liveBytes -= block->capacity;
  return block;
}

// Gives what no longer fits under the limit.
Pool::Blocks Pool::Keep(Block block) {
  const std::lock_guard lock(mutex_);
  if (block->capacity > limit_) {
    Blocks rejected;
    rejected.push_back(std::move(block));
    return rejected;
  }
  const std::uint64_t capacity = block->capacity;
  block->age = ++clock_;
  PoisonMemory(block->base, capacity);
  kept_[capacity].push_back(std::move(block));
  ++statistics_.keptBlocks;
  statistics_.keptBytes += capacity;
  return TakeOverLimit();
}

Pool::Blocks Pool::TakeOverLimit() {
  Blocks taken;
  while (statistics_.keptBytes > limit_) MoveOldest(taken);
  return taken;
}

// Moves list nodes, since this runs when memory is short.
void Pool::MoveOldest(Blocks& to) {
  Blocks* oldest = nullptr;
  for (auto& [capacity, blocks] : kept_) {
    if (blocks.empty()) continue;
    if (oldest == nullptr || blocks.front()->age < oldest->front()->age) oldest = &blocks;
  }
  to.splice(to.end(), *oldest, oldest->begin());
  --statistics_.keptBlocks;
  statistics_.keptBytes -= to.back()->capacity;
}

void Pool::SetLimit(std::uint64_t bytes) {
  Blocks evicted;
  const std::lock_guard lock(mutex_);
  limit_ = bytes;
  evicted = TakeOverLimit();
}

std::uint64_t Pool::GiveBack(std::uint64_t bytes) {
  Blocks evicted;
  std::uint64_t freed = 0;
  const std::lock_guard lock(mutex_);
  while (freed < bytes && statistics_.keptBlocks != 0) {
    MoveOldest(evicted);
    freed += evicted.back()->capacity;
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
