#include "tools/pxl/drawing.h"

#include <cstring>
#include <string>

#include "tools/pxl/failure.h"

namespace pxl {
namespace {

constexpr std::uint16_t kSrcCopy = 0;

void CheckDrawing(std::int16_t error) {
  if (error != 0) {
    throw Failure("the drawing layer gives error " + std::to_string(error));
  }
}

}  // namespace

World SurfaceWith(Module& module, const Picture& picture) {
  const PictureHeader& header = picture.header;
  World world(module, PXL_Depth_32, header.width, header.height, Backing::Surface);
  const PixelLock lock(world);
  for (std::int64_t y = 0; y < header.height; ++y) {
    std::memcpy(lock.Rows().Row(y), picture.Row(y), picture.RowBytes());
  }
  return world;
}

void Draw(const World& source, const World& destination, std::uint16_t mode,
          const Rect* sourceRect) {
  const PixelLock sourceLock(source);
  const PixelLock destinationLock(destination);
  source.module().Check(PXL_Blit(source.handle(), destination.handle(), sourceRect, nullptr, mode));
  CheckDrawing(QDE_Error());
}

void SetPortColour(const World& destination, std::int32_t which, const QDE_RGBColor& colour) {
  CheckDrawing(QDE_SetPortColor(destination.Record().gworld, which, &colour));
}

World ThroughIndices(const World& source, std::uint16_t mode) {
  const PXL_World record = source.Record();
  const World indices(source.module(), PXL_Depth_8, record.width, record.height, Backing::Surface);
  Draw(source, indices, mode);
  World colours(source.module(), PXL_Depth_32, record.width, record.height, Backing::Surface);
  Draw(indices, colours, kSrcCopy);
  return colours;
}

}  // namespace pxl
