// Random calls on many Worlds, as of a busy host.
#ifndef TOOLS_PXL_COMMANDS_SOAK_H
#define TOOLS_PXL_COMMANDS_SOAK_H

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "tools/pxl/module/world.h"

namespace pxl {

// The number of each operation so far.
struct SoakCounts {
  std::uint64_t made = 0;
  std::uint64_t disposed = 0;
  std::uint64_t locked = 0;
  std::uint64_t drawn = 0;
  std::uint64_t resized = 0;
  std::uint64_t refused = 0;   // calls that lacked memory
  std::uint64_t reloaded = 0;  // surfaces whose pixels had been purged
};

// Makes, locks, fills, draws, re-sizes and disposes of Worlds of every depth
// and backing. Checks pixels that it has filled whenever it locks them.
// The same seed results in the same calls unless memory runs short at other times.
class Soak {
 public:
  Soak(Module& module, std::uint64_t seed) : module_(module), random_(seed) {}

  // One random operation. Lack of memory is counted; throws Failure for any other
  // error, a lost pixel included.
  void Step();
  void DisposeOfAll();
  const SoakCounts& counts() const { return counts_; }

 private:
  struct Item {
    World world;
    int locks = 0;
    std::optional<std::int32_t> fill;  // the value of all its pixels
  };
  struct Size {
    std::int64_t width, height;
  };

  // A number from 0 to `end` - 1.
  std::size_t Below(std::size_t end);
  bool Chance(double probability);
  Item& Any() { return items_[Below(items_.size())]; }
  Size RandomSize(std::int64_t longest);
  Size SizeOfAny(std::int64_t longest);

  void Make();
  void Dispose(std::size_t index);
  void DisposeOfAny();
  void LockAny();
  void UnlockAny();
  void FillAny();
  void BlitAny();
  void ResizeAny();

  // Throws for a status that is an error, after disposing of the World.
  void CheckOrDispose(Item& item, std::int32_t status);
  bool Lock(Item& item);
  void Unlock(Item& item);
  static void CheckPixels(const Item& item);
  void Draw(Item& source, Item& destination);
  void Convert(Item& source, Item& destination);

  Module& module_;
  std::mt19937_64 random_;
  std::vector<Item> items_;
  SoakCounts counts_;
};

}  // namespace pxl

#endif
