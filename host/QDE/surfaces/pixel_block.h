// The blocks of K's store that hold pixels.
#ifndef QDE_PIXEL_BLOCK_H
#define QDE_PIXEL_BLOCK_H

#include <cstdint>
#include <memory>

#include "QDE_host.h"

namespace qde {

struct FreeBlock {
  void operator()(Handle handle) const;
};
// Owns a handle of the store.
using PixelBlock = std::unique_ptr<Ptr, FreeBlock>;

// Allocates a block of unset bytes, if necessary after K has purged others; null
// without memory. Moves no block.
PixelBlock NewPixelBlock(std::uint64_t size, bool purgeable);

// The handle in a baseAddr; null if it contains none.
Handle HandleIn(Ptr baseAddr);

// The block's address; null if the block is absent or smaller.
Ptr PixelsOf(Handle handle, std::uint64_t size);

// Locks a block during the life of this object, unless it was locked before.
class Pin {
 public:
  Pin() = default;
  explicit Pin(Handle handle);
  ~Pin();
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;
  Pin(Pin&& other) noexcept;
  Pin& operator=(Pin&& other) noexcept;

 private:
  Handle handle_ = nullptr;  // null if there is no lock to undo
};

}  // namespace qde

#endif
