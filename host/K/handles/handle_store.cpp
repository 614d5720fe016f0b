#include "host/K/handles/handle_store.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "host/K/events/time_line.h"
#include "host/K/limits/budget.h"
#include "host/immortal.h"

namespace k {
namespace {

// So many freed master pointers rest before the oldest is used again, so that a
// handle freed twice is not soon somebody else's.
constexpr std::size_t kResting = 256;

// An empty block has an address of its own: only empty handles have none.
std::uint64_t HeapSize(std::uint64_t size) {
  return std::max<std::uint64_t>(size, 1);
}

// Made while the library is loaded: there may be no memory for it later.
[[maybe_unused]] const HandleStore& kLoadedStore = HandleStore::Instance();

using HeapCall = void* (*)(std::uint64_t size);

// Not inline, or compilers make one calloc of this and of clearing.
[[gnu::noinline]] void* AllocateUnset(std::uint64_t size) {
  return std::malloc(size);
}

// The runtime has a quick store of small blocks, but not for calloc, which in
// turn knows that fresh memory of the system is clear.
void* AllocateClear(std::uint64_t size) {
  constexpr std::uint64_t kSmall = 1024;
  if (size > kSmall) return std::calloc(1, size);
  void* block = AllocateUnset(size);
  if (block != nullptr) std::memset(block, 0, size);
  return block;
}

struct BookedBlock {
  void* block;  // null when somebody refused
  Refuser refuser;
};

// A block from the heap, booked in the budget.
BookedBlock AllocateBooked(HeapCall allocate, std::uint64_t size) {
  const Refuser refuser = ReserveMemory(size);
  if (refuser != Refuser::Nobody) return {nullptr, refuser};
  void* block = allocate(HeapSize(size));
  if (block != nullptr) return {block, Refuser::Nobody};
  ReleaseMemory(size);
  return {nullptr, Refuser::System};
}

}  // namespace

HandleStore& HandleStore::Instance() {
  // Never destroyed: handles are still used while the process ends.
  static Immortal<HandleStore> store;
  return *store;
}

Master* HandleStore::Find(Handle handle) const {
  Master* master = masters_.At(handle);
  const bool live = master != nullptr && master->live.load(std::memory_order_acquire);
  return live ? master : nullptr;
}

Master* HandleStore::TakeMaster() {
  return resting_.size() > kResting ? resting_.TakeFirst() : masters_.Add();
}

Handle HandleStore::MakeLive(Master* master, void* block, std::uint64_t size) {
  master->block = static_cast<Ptr>(block);
  master->size = size;
  master->purgeable = false;
  master->hold.store(Hold::Nobody, std::memory_order_relaxed);
  master->live.store(true, std::memory_order_release);
  ++count_;
  SetBytes(bytes_ + size);
  return HandleOf(master);
}

Handle HandleStore::NewEmpty() {
  const std::lock_guard lock(mutex_);
  return MakeLive(TakeMaster(), nullptr, 0);
}

// The master pointer comes first: what throws must not leave a block behind.
Refuser HandleStore::Allocate(HeapCall heapCall, std::uint64_t size, Handle& handle) {
  const std::lock_guard lock(mutex_);
  Master* master = TakeMaster();
  const BookedBlock booked = AllocateBooked(heapCall, size);
  if (booked.block != nullptr) {
    handle = MakeLive(master, booked.block, size);
  } else {
    resting_.AddFirst(master);
  }
  return booked.refuser;
}

Handle HandleStore::AllocateOrNote(HeapCall heapCall, std::uint64_t size) {
  Handle handle = nullptr;
  NoteRefusal(Allocate(heapCall, size, handle), size);
  return handle;
}

Handle HandleStore::New(std::uint64_t size) {
  return AllocateOrNote(AllocateUnset, size);
}

Handle HandleStore::NewClear(std::uint64_t size) {
  return AllocateOrNote(AllocateClear, size);
}

bool HandleStore::Free(Handle handle) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->live.store(false, std::memory_order_relaxed);
  --count_;
  void* block = std::exchange(master->block, nullptr);
  const std::uint64_t size = std::exchange(master->size, 0);
  if (block != nullptr) {
    ReleaseMemory(size);
    SetBytes(bytes_ - size);
    Retire(block, size);
  }
  resting_.AddLast(master);
  return true;
}

bool HandleStore::IsLive(Handle handle) const {
  return Find(handle) != nullptr;
}

bool HandleStore::IsLocked(Handle handle) const {
  const Master* master = Find(handle);
  return master != nullptr && master->hold == Hold::Caller;
}

// Hosts lock and unlock all the time, so that the store's own lock is taken only
// to wait until it has moved the block.
bool HandleStore::Lock(Handle handle) {
  Master* master = Find(handle);
  if (master == nullptr) return false;
  Hold hold = Hold::Nobody;
  while (!master->hold.compare_exchange_strong(hold, Hold::Caller) && hold == Hold::Store) {
    const std::lock_guard lock(mutex_);
    hold = Hold::Nobody;
  }
  return true;
}

bool HandleStore::Unlock(Handle handle) {
  Master* master = Find(handle);
  if (master == nullptr) return false;
  Hold hold = Hold::Caller;
  master->hold.compare_exchange_strong(hold, Hold::Nobody);
  return true;
}

bool HandleStore::SetPurgeable(Handle handle, bool purgeable) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->purgeable = purgeable;
  return true;
}

// Does what takes an unlocked block away from its place; callers that lock it
// wait meanwhile. False when it is locked, or none.
template <class Change>
bool HandleStore::UnlessLocked(Master& master, Change change) {
  if (master.block == nullptr) return false;
  Hold hold = Hold::Nobody;
  if (!master.hold.compare_exchange_strong(hold, Hold::Store)) return false;
  change(master);
  master.hold.store(Hold::Nobody, std::memory_order_release);
  return true;
}

bool HandleStore::Purge(Handle handle) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  return master != nullptr && UnlessLocked(*master, [this](Master& held) { Discard(held); });
}

std::uint64_t HandleStore::FreeOldPlaces() {
  const std::lock_guard lock(mutex_);
  return quarantine_.Clear();
}

std::uint64_t HandleStore::PurgeAtLeast(std::uint64_t bytes) {
  const std::lock_guard lock(mutex_);
  std::uint64_t freed = 0;
  masters_.ForEach([&](Master& master) {
    if (freed >= bytes) return;
    if (!master.purgeable) return;
    UnlessLocked(master, [&](Master& held) {
      freed += held.size;
      Discard(held);
    });
  });
  return freed;
}

// Takes the block away for good, so that its memory is free at once.
void HandleStore::Discard(Master& master) {
  ReleaseMemory(master.size);
  SetBytes(bytes_ - master.size);
  std::free(master.block);
  master.block = nullptr;
  master.size = 0;
}

void HandleStore::SetBytes(std::uint64_t bytes) {
  bytes_ = bytes;
  TellHandles(bytes_);
}

void HandleStore::TellTimeLine() const {
  const std::lock_guard lock(mutex_);
  TellHandles(bytes_);
}

// Lets go of a place that somebody may still point to.
void HandleStore::Retire(void* block, std::uint64_t size) {
  if (scramble_) {
    quarantine_.Add(block, HeapSize(size));
  } else {
    std::free(block);
  }
}

void HandleStore::SetScramble(bool on) {
  const std::lock_guard lock(mutex_);
  scramble_ = on;
  if (!on) quarantine_.Clear();
}

void HandleStore::MoveUnlocked() {
  const std::lock_guard lock(mutex_);
  masters_.ForEach(
      [this](Master& master) { UnlessLocked(master, [this](Master& held) { Move(held); }); });
}

void HandleStore::ScrambleUnlocked() {
  if (scramble_) MoveUnlocked();
}

void HandleStore::Move(Master& master) {
  void* place = std::malloc(HeapSize(master.size));
  if (place == nullptr) return;
  std::memcpy(place, master.block, master.size);
  Retire(master.block, master.size);
  master.block = static_cast<Ptr>(place);
}

std::uint64_t HandleStore::SizeOf(Handle handle) const {
  const std::lock_guard lock(mutex_);
  const Master* master = Find(handle);
  return master != nullptr ? master->size : 0;
}

std::uint64_t HandleStore::Count() const {
  const std::lock_guard lock(mutex_);
  return count_;
}

}  // namespace k
