// The colours of Worlds of 8 bits.
#ifndef TOOLS_PXL_MODULE_STANDARD_COLOURS_H
#define TOOLS_PXL_MODULE_STANDARD_COLOURS_H

#include <cstddef>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The drawing layer's 256 standard colours by index.
const Palette& StandardColours();

// Makes opaque pixels of 8 bits a channel of `width` indices.
void LookUpColours(const std::byte* indices, std::byte* pixels, std::size_t width);

}  // namespace pxl

#endif
