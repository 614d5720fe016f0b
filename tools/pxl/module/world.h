// Worlds and pixel locks that are released in their destructors.
#ifndef TOOLS_PXL_MODULE_WORLD_H
#define TOOLS_PXL_MODULE_WORLD_H

#include <cstdint>
#include <memory>

#include "PXL.h"
#include "tools/pxl/module/module.h"
#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The depth with channels of that type, and the type of the channels of a depth.
std::int32_t DepthOf(SampleType samples);
SampleType SamplesOf(std::int32_t depth);

// The memory of a World's pixels.
enum class Backing {
  None,             // no pixels: the World has a geometry only
  Frame,            // a block of the heap or of K's pool
  MappedFile,       // a file, mapped while the World is locked
  Surface,          // a surface of the drawing layer; deeper than 32 bits a frame
  PurgeableSurface  // the same; lack of memory may take its pixels
};

class World {
 public:
  // Makes a World with its origin at 0, 0. Throws Failure for a side above the limit,
  // and with the module's report when the module refuses.
  World(Module& module, std::int32_t depth, std::int64_t width, std::int64_t height,
        Backing backing = Backing::Frame);

  PXL_WorldHandle handle() const { return handle_.get(); }
  Module& module() const { return *module_; }
  Backing backing() const { return backing_; }
  // A copy of the current record. The record itself moves whenever the module is
  // called.
  PXL_World Record() const;

 private:
  struct Disposer {
    void operator()(PXL_World** handle) const { PXL_DisposeWorld(handle); }
  };
  Module* module_;
  Backing backing_;
  std::unique_ptr<PXL_World*, Disposer> handle_;
};

// The record of a World of that geometry, made without pixel memory, to check before
// decoding whether a picture fits. Throws Failure.
PXL_World MeasureWorld(Module& module, std::int32_t depth, std::int64_t width, std::int64_t height);

// Keeps the pixels of a World locked. The World object may be moved meanwhile.
class PixelLock {
 public:
  // Throws Failure.
  explicit PixelLock(const World& world);
  PixelLock(const PixelLock&) = delete;
  PixelLock& operator=(const PixelLock&) = delete;
  ~PixelLock();

  PixelRows Rows() const;

 private:
  PXL_WorldHandle handle_;
};

}  // namespace pxl

#endif
