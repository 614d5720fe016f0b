// Converts pixels from one 32-bit format to the other, in place.
#ifndef QDE_REVERSE_PIXELS_H
#define QDE_REVERSE_PIXELS_H

#include <cstdint>

namespace qde {

// The padding of rows is unchanged. rowBytes may be negative.
void ReversePixels(void* base, std::int32_t height, std::int32_t width, std::int32_t rowBytes);

}  // namespace qde

#endif
