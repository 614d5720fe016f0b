// Blits and colours on surfaces, with the errors of the drawing layer.
#include "tools/pxl/module/drawing.h"

#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

void CheckDrawing(std::int16_t error) {
  if (error != 0) {
    throw Failure("the drawing layer returns error " + std::to_string(error));
  }
}

}  // namespace

void Draw(const World& source, const World& destination, std::uint16_t mode) {
  const PixelLock sourceLock(source);
  const PixelLock destinationLock(destination);
  source.module().Check(PXL_Blit(source.handle(), destination.handle(), nullptr, nullptr, mode));
  CheckDrawing(QDE_Error());
}

void SetPortColour(const World& destination, std::int32_t which, const QDE_RGBColor& colour) {
  CheckDrawing(QDE_SetPortColor(destination.Record().gworld, which, &colour));
}

}  // namespace pxl
