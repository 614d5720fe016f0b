// English texts of error numbers.
#ifndef K_SYSTEM_ERRORS_H
#define K_SYSTEM_ERRORS_H

#include <array>
#include <cstdint>

namespace k {

// A sentence for a known error of the drawing layer or of a module, else "error N";
// ends in a zero byte. Allocates nothing, since the error may be a lack of memory.
std::array<char, 64> EnglishError(std::int32_t error);

}  // namespace k

#endif
