// From one 32-bit format to the other, in place.
#ifndef QDE_REVERSE_PIXELS_H
#define QDE_REVERSE_PIXELS_H

#include <cstdint>

namespace qde {

// Rows may have padding, which stays as it is. A negative rowBytes goes up in
// memory.
void ReversePixels(void* base, std::int32_t height, std::int32_t width, std::int32_t rowBytes);

}  // namespace qde

#endif
