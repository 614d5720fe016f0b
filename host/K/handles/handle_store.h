// The store of relocatable blocks: master pointers that stay where they are,
// and blocks that move.
#ifndef K_HANDLE_STORE_H
#define K_HANDLE_STORE_H

#include <cstdint>
#include <mutex>

#include "PXL_Types.h"
#include "host/K/handles/handle_blocks.h"
#include "host/K/handles/master_queue.h"
#include "host/K/handles/master_table.h"

namespace k {

// Safe on any thread in itself; a block must not be in use elsewhere while a
// call moves or frees it.
class HandleStore {
 public:
  static HandleStore& Instance();

  // The caller frees the handle. Null when the budget or the heap refuses, which
  // is counted as a refusal. Throws std::bad_alloc when the store's own tables
  // cannot grow.
  Handle NewEmpty();
  Handle New(std::uint64_t size, Content content);

  bool IsLive(Handle handle) const;
  // False when the handle is not live.
  bool IsLocked(Handle handle) const;

  // These return false, and do nothing, when the handle is not live.
  bool Free(Handle handle);
  bool Lock(Handle handle);
  bool Unlock(Handle handle);
  bool SetPurgeable(Handle handle, bool purgeable);
  // Also false for a locked or an empty handle.
  bool Purge(Handle handle);

  // Purges unlocked purgeable blocks, in the order of their master pointers,
  // until `bytes` are free. Returns the bytes freed. Moves nothing.
  std::uint64_t PurgeAtLeast(std::uint64_t bytes);

  // Frees the places that scrambled blocks left behind. Returns their bytes.
  std::uint64_t FreeOldPlaces();

  void SetScramble(bool on);
  // Moves all unlocked blocks: always, or only while scrambling is on.
  void MoveUnlocked();
  void ScrambleUnlocked();

  std::uint64_t SizeOf(Handle handle) const;
  std::uint64_t Count() const;
  // Notes the bytes of all blocks in the time line.
  void NoteTotals() const;

 private:
  static Handle HandleOf(Master* master) { return &master->block; }
  Master* Find(Handle handle) const;
  Master* TakeMaster();
  Handle MakeLive(Master* master, void* block, std::uint64_t size);
  Refuser Allocate(std::uint64_t size, Content content, Handle& handle);
  template <typename Change>
  bool UnlessLocked(Master& master, Change change);
  void Discard(Master& master);

  mutable std::mutex mutex_;
  MasterTable masters_;
  MasterQueue resting_;  // freed ones, oldest first
  std::uint64_t count_ = 0;
  HandleBlocks blocks_;
};

}  // namespace k

#endif
