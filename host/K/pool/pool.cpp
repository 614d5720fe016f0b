// The pool of recycled blocks.
#include "host/K/pool/pool.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <new>
#include <utility>

#include "host/K/events/time_line.h"
#include "host/K/pool/block_checks.h"
#include "host/K/system/virtual_memory.h"
#include "host/immortal.h"

namespace k {
namespace {

// Every budget refuses this size, and rounding it up does not overflow.
constexpr std::uint64_t kTooMuch = std::uint64_t{1} << 49;
constexpr std::uint32_t kMargins = K_PoolCheck_GUARDS | K_PoolCheck_FENCES;
constexpr std::uint32_t kAllChecks = kMargins | K_PoolCheck_FILL;

// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Pool& kLoadedPool = Pool::Instance();

std::uint64_t RoundUp(std::uint64_t size, std::uint64_t step) {
  return std::max((size + step - 1) / step, std::uint64_t{1}) * step;
}

// Eight size classes between powers of two, each of whole pages: at most an
// eighth of a block is waste, and frames of nearly the same size share a class.
std::uint64_t SizeClass(std::uint64_t size) {
  return RoundUp(size, std::max(std::bit_floor(size) / 8, PageSize()));
}

// A margin begins as close as possible to the end of the requested size.
BlockShape ShapeFor(std::uint64_t size, std::uint32_t checks) {
  const std::uint32_t margins = checks & kMargins;
  return {margins, margins != 0 ? RoundUp(size, PageSize()) : SizeClass(size)};
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
    if (BlockNode kept = TakeKept(shape)) return MakeLive(std::move(kept));
    ++statistics_.misses;
  }
  auto block = std::make_unique<K_RecycledPtr>(shape);
  LiveBlocks alone;
  const auto [made, _] = alone.emplace(block->base, std::move(block));
  BlockNode node = alone.extract(made);
  const std::lock_guard lock(mutex_);
  return MakeLive(std::move(node));
}

K_RecycledPtrRef Pool::MakeLive(BlockNode node) {
  K_RecycledPtr* ref = node.mapped().get();
  live_.insert(std::move(node));
  ++statistics_.liveBlocks;
  statistics_.liveBytes += ref->shape.capacity;
  statistics_.peakBytes = std::max(statistics_.peakBytes, statistics_.liveBytes + kept_.Bytes());
  NoteBytes();
  return ref;
}

BlockNode Pool::TakeKept(const BlockShape& shape) {
  BlockNode kept = kept_.Take(shape);
  if (kept) ++statistics_.hits;
  return kept;
}

// A plain free locks once. A block that is not kept is unmapped after the unlock.
bool Pool::Free(void* base) {
  BlockNode node;
  bool overLimit = false;
  {
    std::unique_lock lock(mutex_);
    node = TakeLive(base);
    if (node.empty()) return false;
    CheckAndFill(*node.mapped(), lock);
    if (IsWorthKeeping(*node.mapped())) kept_.Add(std::exchange(node, {}));
    NoteBytes();
    overLimit = kept_.Bytes() > limit_;
  }
  if (overLimit) EvictOverLimit();
  return true;
}

BlockNode Pool::TakeLive(const void* base) {
  BlockNode node = live_.extract(base);
  if (node.empty()) return node;
  --statistics_.liveBlocks;
  statistics_.liveBytes -= node.mapped()->shape.capacity;
  return node;
}

// Without the lock: touching all of a block takes long.
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

BlockNode Pool::TakeOldest(std::uint64_t keptBytes) {
  const std::lock_guard lock(mutex_);
  if (kept_.Bytes() <= keptBytes) return {};
  BlockNode oldest = kept_.TakeOldest();
  NoteBytes();
  return oldest;
}

// Block by block: unmapping is slow and must not delay other threads, and a list
// of blocks would need memory.
void Pool::EvictOverLimit() {
  while (const BlockNode oldest = TakeOldest(limit_)) CheckFilled(*oldest.mapped());
}

void Pool::SetLimit(std::uint64_t bytes) {
  limit_ = bytes;
  EvictOverLimit();
}

std::uint64_t Pool::Limit() const {
  return limit_;
}

// Kept blocks with other margins would never be used again.
void Pool::SetChecks(std::uint32_t checks) {
  const std::uint32_t before = checks_.exchange(checks & kAllChecks);
  if ((before & kMargins) != (checks & kMargins)) {
    ReleaseKept(std::numeric_limits<std::uint64_t>::max());
  }
}

std::uint32_t Pool::Checks() const {
  return checks_;
}

std::uint64_t Pool::ReleaseKept(std::uint64_t bytes) {
  std::uint64_t freed = 0;
  while (freed < bytes) {
    const BlockNode oldest = TakeOldest(0);
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

void Pool::NoteBytes() const {
  NoteBlocks(statistics_.liveBytes, kept_.Bytes());
}

void Pool::NoteTotals() const {
  const std::lock_guard lock(mutex_);
  NoteBytes();
}

K_PoolStatistics Pool::Statistics() const {
  const std::lock_guard lock(mutex_);
  K_PoolStatistics statistics = statistics_;
  statistics.keptBlocks = kept_.Count();
  statistics.keptBytes = kept_.Bytes();
  return statistics;
}

}  // namespace k
