// A World that is disposed of, and a lock that is taken back, on every path.
#ifndef TOOLS_PXL_MODULE_WORLD_H
#define TOOLS_PXL_MODULE_WORLD_H

#include <cstdint>
#include <memory>

#include "PXL.h"
#include "tools/pxl/module/module.h"
#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The depth whose channels are of that type, and the other way round.
std::int32_t DepthOf(SampleType samples);
SampleType SamplesOf(std::int32_t depth);

// Where a World has its pixels.
enum class Backing {
  None,             // nowhere: the World has a geometry only
  Frame,            // a block of the heap or of K's pool
  MappedFile,       // a file, mapped while the World is locked
  Surface,          // a surface of the drawing layer; deeper than 32 bits a frame
  PurgeableSurface  // the same; lack of memory may take its pixels
};

class World {
 public:
  // Makes a World with its origin at 0, 0. Throws Failure with the limit that a
  // side or the module sets, in the module's words where it is the module's.
  World(Module& module, std::int32_t depth, std::int64_t width, std::int64_t height,
        Backing backing = Backing::Frame);

  PXL_WorldHandle handle() const { return handle_.get(); }
  Module& module() const { return *module_; }
  Backing backing() const { return backing_; }
  // The record as it stands now. It moves whenever the module is called, so
  // this is a copy.
  PXL_World Record() const;

 private:
  struct Disposer {
    void operator()(PXL_World** handle) const { PXL_DisposeWorld(handle); }
  };
  Module* module_;
  Backing backing_;
  std::unique_ptr<PXL_World*, Disposer> handle_;
};

// The record of a World of that geometry, made without pixel memory: the test,
// before anything is decoded, whether a picture fits. Throws Failure.
PXL_World MeasureWorld(Module& module, std::int32_t depth, std::int64_t width, std::int64_t height);

// Holds a World's pixels where they are. The World may change hands meanwhile.
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
