// Drawing between Worlds on surfaces of the drawing layer.
#ifndef TOOLS_PXL_MODULE_DRAWING_H
#define TOOLS_PXL_MODULE_DRAWING_H

#include <cstdint>

#include "QDE_host.h"
#include "tools/pxl/module/world.h"

namespace pxl {

// Blits all of the source to all of the destination, in a transfer mode by its
// index. Both are on surfaces. Throws Failure for errors of the drawing layer, which
// the blit does not return.
void Draw(const World& source, const World& destination, std::uint16_t mode);

// Sets a colour for drawing on the surface. Throws Failure.
void SetPortColour(const World& destination, std::int32_t which, const QDE_RGBColor& colour);

}  // namespace pxl

#endif
