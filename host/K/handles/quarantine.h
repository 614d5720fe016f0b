// Old places of blocks that moved or were freed. They stay allocated for some
// time, filled with a pattern, so that stale pointers to them show.
#ifndef K_QUARANTINE_H
#define K_QUARANTINE_H

#include <cstdint>
#include <list>

namespace k {

// Not safe for use on several threads: its owner locks.
class Quarantine {
 public:
  // Takes ownership of a block from malloc. Frees the oldest blocks beyond the
  // limits, and this one at once when there is no memory to note it.
  void Add(void* block, std::uint64_t size);
  // Frees all blocks. Returns their bytes.
  std::uint64_t Clear();

 private:
  struct Place {
    void* block;
    std::uint64_t size;
  };
  void FreeOldest();

  std::list<Place> places_;
  std::uint64_t bytes_ = 0;
};

}  // namespace k

#endif
