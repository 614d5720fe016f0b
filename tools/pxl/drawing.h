// Worlds on surfaces of the drawing layer, and drawing between them.
#ifndef TOOLS_PXL_DRAWING_H
#define TOOLS_PXL_DRAWING_H

#include <cstdint>

#include "QDE_host.h"
#include "tools/pxl/picture.h"
#include "tools/pxl/world.h"

namespace pxl {

// A World of 32 bits on a surface with the pixels of an Integer8 picture.
// Throws Failure.
World SurfaceWith(Module& module, const Picture& picture);

// Blits from a rectangle of the source, all of it if null, to all of the
// destination, in a transfer mode by its index. Both are on surfaces. Throws
// Failure when nothing was drawn, which the blit itself does not tell.
void Draw(const World& source, const World& destination, std::uint16_t mode,
          const Rect* sourceRect = nullptr);

// Gives the surface a colour to be drawn on with. Throws Failure.
void SetPortColour(const World& destination, std::int32_t which, const QDE_RGBColor& colour);

// The picture by way of the 256 standard colours: an index for each pixel
// in a World of 8 bits, drawn in the mode, and its colour in one of 32, without
// alpha. Throws Failure.
World ThroughIndices(const World& source, std::uint16_t mode);

}  // namespace pxl

#endif
