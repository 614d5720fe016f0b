#include "handle_store.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "budget.h"
#include "time_line.h"

namespace k {
namespace {

// So many freed master pointers rest before the oldest is used again, so that a
// handle freed twice is not soon somebody else's.
constexpr std::size_t kResting = 256;

// An empty block has an address of its own: only empty handles have none.
std::uint64_t HeapSize(std::uint64_t size) {
  return std::max<std::uint64_t>(size, 1);
}

using HeapCall = void* (*)(std::uint64_t size);

void* AllocateUnset(std::uint64_t size) {
  return std::malloc(size);
}

void* AllocateClear(std::uint64_t size) {
  return std::calloc(1, size);
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
  static auto* const store = new HandleStore;
  return *store;
}

Master* HandleStore::Find(Handle handle) const {
  Master* master = masters_.At(handle);
  return master != nullptr && master->live ? master : nullptr;
}

Master* HandleStore::TakeMaster() {
  if (resting_.size() > kResting) {
    Master* master = resting_.front();
    resting_.pop_front();
    return master;
  }
  return masters_.Add();
}

Handle HandleStore::MakeLive(Master* master, void* block, std::uint64_t size) {
  *master = {.block = static_cast<Ptr>(block), .size = size, .live = true};
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
    resting_.push_front(master);
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
  const Master old = std::exchange(*master, {});
  --count_;
  if (old.block != nullptr) {
    ReleaseMemory(old.size);
    SetBytes(bytes_ - old.size);
    Retire(old.block, old.size);
  }
  resting_.push_back(master);
  return true;
}

bool HandleStore::IsLive(Handle handle) const {
  const std::lock_guard lock(mutex_);
  return Find(handle) != nullptr;
}

bool HandleStore::IsLocked(Handle handle) const {
  const std::lock_guard lock(mutex_);
  const Master* master = Find(handle);
  return master != nullptr && master->locked;
}

bool HandleStore::SetLocked(Handle handle, bool locked) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->locked = locked;
  return true;
}

bool HandleStore::SetPurgeable(Handle handle, bool purgeable) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr) return false;
  master->purgeable = purgeable;
  return true;
}

bool HandleStore::Purge(Handle handle) {
  const std::lock_guard lock(mutex_);
  Master* master = Find(handle);
  if (master == nullptr || master->locked || master->block == nullptr) return false;
  Discard(*master);
  return true;
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
    if (!master.purgeable || master.locked || master.block == nullptr) return;
    freed += master.size;
    Discard(master);
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
  masters_.ForEach([this](Master& master) {
    if (!master.locked && master.block != nullptr) Move(master);
  });
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
