// Places that blocks moved away from. They stay allocated for a while, filled
// with a pattern, so that a stale pointer is seen and does not crash.
#ifndef K_QUARANTINE_H
#define K_QUARANTINE_H

#include <cstdint>
#include <list>

namespace k {

// Not safe for use on several threads: its owner locks.
class Quarantine {
 public:
  // Takes over a block from malloc. The oldest are freed to stay within bounds,
  // this one at once when there is no memory to note it.
  void Add(void* block, std::uint64_t size);
  // Frees all; gives their bytes.
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
