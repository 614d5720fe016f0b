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

// A block of unset bytes, after freeing what K can spare; null when that is
// not enough. Moves nothing.
PixelBlock NewPixelBlock(std::uint64_t size, bool purgeable);

// The handle that a baseAddr holds; null when it holds something else.
Handle HandleIn(Ptr baseAddr);

// The block's address; null when there is no block of that size.
Ptr PixelsOf(Handle handle, std::uint64_t size);

// Keeps a block where it is for as long as this lives, and leaves its lock as
// it was found.
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
  Handle handle_ = nullptr;  // null when there is nothing to undo
};

}  // namespace qde

#endif
