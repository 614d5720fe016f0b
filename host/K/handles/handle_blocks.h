// The blocks of handles: heap memory that is booked in the budget and can move.
#ifndef K_HANDLE_BLOCKS_H
#define K_HANDLE_BLOCKS_H

#include <atomic>
#include <cstdint>

#include "host/K/handles/quarantine.h"
#include "host/K/limits/refusals.h"

namespace k {

enum class Content { Unset, Clear };

// Not safe for use on several threads, except for Scrambles: its owner locks.
class HandleBlocks {
 public:
  struct Result {
    void* block;  // null when refused
    Refuser refuser;
  };
  // A block of `size` bytes. Also one of 0 bytes has an address of its own.
  Result Allocate(std::uint64_t size, Content content);
  // Frees a block. While scrambling is on, its memory stays allocated for some
  // time, so that stale pointers to it show.
  void Free(void* block, std::uint64_t size);
  // Frees a block and its memory at once.
  void Discard(void* block, std::uint64_t size);
  // Returns the new address of the block; the old one when there is no memory.
  void* Move(void* block, std::uint64_t size);

  void SetScramble(bool on);
  bool Scrambles() const { return scramble_; }
  // Frees the old places of moved and freed blocks. Returns their bytes.
  std::uint64_t FreeOldPlaces() { return quarantine_.Clear(); }

  // Notes the bytes of all blocks in the time line.
  void NoteBytes() const;

 private:
  void Unbook(std::uint64_t size);
  void Retire(void* block, std::uint64_t size);

  std::uint64_t bytes_ = 0;
  Quarantine quarantine_;
  std::atomic<bool> scramble_ = false;
};

}  // namespace k

#endif
