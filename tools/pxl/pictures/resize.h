// Pictures cropped, reduced and enlarged by whole factors, in their own samples.
#ifndef TOOLS_PXL_PICTURES_RESIZE_H
#define TOOLS_PXL_PICTURES_RESIZE_H

#include <cstdint>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The smallest factor that leaves neither side longer than `side`; 1 if none is.
std::int64_t ReductionTo(std::int64_t side, const PictureHeader& header);

// Each pixel the mean of a square of factor x factor pixels, smaller at the
// right and the lower edge; integers rounded to nearest, halves upward. Alpha
// is a channel like the others.
Picture Reduced(const Picture& picture, std::int64_t factor);

// The middle of the picture, in a size that is not larger. An odd difference of the
// sizes moves it half a pixel up or left.
Picture Cropped(const Picture& picture, std::int64_t width, std::int64_t height);

// Each pixel a square of factor x factor pixels.
Picture Enlarged(const Picture& picture, std::int64_t factor);

// The picture reduced until neither side is longer than `side`, or enlarged as far as
// neither becomes longer.
Picture Fitted(const Picture& picture, std::int64_t side);

}  // namespace pxl

#endif
