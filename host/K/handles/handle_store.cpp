// The store of relocatable blocks.
#include "host/K/handles/handle_store.h"

#include <utility>

#include "host/immortal.h"

namespace k {
namespace {

// The number of freed master pointers that wait before the oldest is used again,
// so that a handle freed twice seldom belongs to another caller by then.
constexpr std::size_t kResting = 256;

// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const HandleStore& kLoadedStore = HandleStore::Instance();

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
  master->hold.store(Hold::None, std::memory_order_relaxed);
  master->live.store(true, std::memory_order_release);
  ++count_;
  return HandleOf(master);
}

Handle HandleStore::NewEmpty() {
  const std::lock_guard lock(mutex_);
  Handle handle = MakeLive(TakeMaster(), nullptr, 0);
  blocks_.NoteBytes();
  return handle;
}

// The master pointer comes first: an exception must not leak a block.
Refuser HandleStore::Allocate(std::uint64_t size, Content content, Handle& handle) {
  const std::lock_guard lock(mutex_);
  Master* master = TakeMaster();
  const auto [block, refuser] = blocks_.Allocate(size, content);
  if (block != nullptr) {
    handle = MakeLive(master, block, size);
  } else {
    resting_.AddFirst(master);
  }
  return refuser;
}

Handle HandleStore::New(std::uint64_t size, Content content) {
  Handle handle = nullptr;
  NoteRefusal(Allocate(size, content, handle), size);
  return handle;
}

bool HandleStore::Free(Handle handle) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->live.store(false, std::memory_order_relaxed);
  --count_;
  void* block = std::exchange(master->block, nullptr);
  const std::uint64_t size = std::exchange(master->size, 0);
  if (block != nullptr) blocks_.Free(block, size);
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

// Locking is frequent: the store's own lock is taken only to wait until the store
// has moved the block.
bool HandleStore::Lock(Handle handle) {
  Master* master = Find(handle);
  if (master == nullptr) return false;
  Hold hold = Hold::None;
  while (!master->hold.compare_exchange_strong(hold, Hold::Caller) && hold == Hold::Store) {
    const std::lock_guard lock(mutex_);
    hold = Hold::None;
  }
  return true;
}

bool HandleStore::Unlock(Handle handle) {
  Master* master = Find(handle);
  if (master == nullptr) return false;
  Hold hold = Hold::Caller;
  master->hold.compare_exchange_strong(hold, Hold::None);
  return true;
}

bool HandleStore::SetPurgeable(Handle handle, bool purgeable) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->purgeable = purgeable;
  return true;
}

// Runs a change of an unlocked block's place; callers that lock the handle wait
// meanwhile. Returns false when the handle is locked or empty.
template <typename Change>
bool HandleStore::UnlessLocked(Master& master, Change change) {
  if (master.block == nullptr) return false;
  Hold hold = Hold::None;
  if (!master.hold.compare_exchange_strong(hold, Hold::Store)) return false;
  change(master);
  master.hold.store(Hold::None, std::memory_order_release);
  return true;
}

bool HandleStore::Purge(Handle handle) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  return master != nullptr && UnlessLocked(*master, [this](Master& held) { Discard(held); });
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

void HandleStore::Discard(Master& master) {
  blocks_.Discard(master.block, master.size);
  master.block = nullptr;
  master.size = 0;
}

std::uint64_t HandleStore::FreeOldPlaces() {
  const std::lock_guard lock(mutex_);
  return blocks_.FreeOldPlaces();
}

void HandleStore::SetScramble(bool on) {
  const std::lock_guard lock(mutex_);
  blocks_.SetScramble(on);
}

void HandleStore::MoveUnlocked() {
  const std::lock_guard lock(mutex_);
  const auto move = [this](Master& held) {
    held.block = static_cast<Ptr>(blocks_.Move(held.block, held.size));
  };
  masters_.ForEach([&](Master& master) { UnlessLocked(master, move); });
}

void HandleStore::ScrambleUnlocked() {
  if (blocks_.Scrambles()) MoveUnlocked();
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

void HandleStore::NoteTotals() const {
  const std::lock_guard lock(mutex_);
  blocks_.NoteBytes();
}

}  // namespace k
