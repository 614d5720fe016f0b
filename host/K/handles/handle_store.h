// The store of relocatable blocks: master pointers that stay where they are,
// and blocks that move.
#ifndef K_HANDLE_STORE_H
#define K_HANDLE_STORE_H

#include <atomic>
#include <cstdint>
#include <mutex>

#include "PXL_Types.h"
#include "host/K/handles/master_queue.h"
#include "host/K/handles/master_table.h"
#include "host/K/handles/quarantine.h"
#include "host/K/limits/refusals.h"

namespace k {

// Safe on any thread in itself; a block must not be in use elsewhere while a
// call moves or frees it.
class HandleStore {
 public:
  static HandleStore& Instance();

  // Null, and noted, when a budget or the heap refuses; std::bad_alloc when the store's
  // own tables cannot grow.
  Handle NewEmpty();
  Handle New(std::uint64_t size);
  Handle NewClear(std::uint64_t size);

  bool IsLive(Handle handle) const;
  // False for what is no live handle.
  bool IsLocked(Handle handle) const;

  // These give false, and do nothing, for what is no live handle.
  bool Free(Handle handle);
  bool Lock(Handle handle);
  bool Unlock(Handle handle);
  bool SetPurgeable(Handle handle, bool purgeable);
  // Also false for a locked or an empty handle.
  bool Purge(Handle handle);

  // Purges unlocked purgeable blocks, in the order of their master pointers,
  // until `bytes` are free; gives the bytes freed. Moves nothing.
  std::uint64_t PurgeAtLeast(std::uint64_t bytes);

  // Frees the places that scrambled blocks left behind; gives their bytes.
  std::uint64_t FreeOldPlaces();

  void SetScramble(bool on);
  // Moves all unlocked blocks: always, or only when the scramble switch is on.
  void MoveUnlocked();
  void ScrambleUnlocked();

  std::uint64_t SizeOf(Handle handle) const;
  std::uint64_t Count() const;
  // Tells it of the bytes of all blocks as they are.
  void TellTimeLine() const;

 private:
  static Handle HandleOf(Master* master) { return &master->block; }
  Master* Find(Handle handle) const;
  Master* TakeMaster();
  Handle MakeLive(Master* master, void* block, std::uint64_t size);
  Refuser Allocate(void* (*heapCall)(std::uint64_t size), std::uint64_t size, Handle& handle);
  Handle AllocateOrNote(void* (*heapCall)(std::uint64_t size), std::uint64_t size);
  template <class Change>
  bool UnlessLocked(Master& master, Change change);
  void Discard(Master& master);
  void SetBytes(std::uint64_t bytes);
  void Retire(void* block, std::uint64_t size);
  void Move(Master& master);

  mutable std::mutex mutex_;
  MasterTable masters_;
  MasterQueue resting_;  // freed ones, oldest first
  std::uint64_t count_ = 0;
  std::uint64_t bytes_ = 0;
  Quarantine quarantine_;
  std::atomic<bool> scramble_ = false;
};

}  // namespace k

#endif
