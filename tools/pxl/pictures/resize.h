// Pictures cropped, and made smaller and larger by whole factors, in their own
// samples.
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

// The middle of the picture, of a size that is no larger; where it cannot lie in
// the middle, half a pixel further up or left.
Picture Cropped(const Picture& picture, std::int64_t width, std::int64_t height);

// Each pixel a square of factor x factor pixels.
Picture Enlarged(const Picture& picture, std::int64_t factor);

// The picture brought near to `side`: smaller until neither side is longer, or
// larger as long as neither becomes so.
Picture Fitted(const Picture& picture, std::int64_t side);

}  // namespace pxl

#endif
