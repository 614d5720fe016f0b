// English wording of error numbers.
#ifndef K_SYSTEM_ERRORS_H
#define K_SYSTEM_ERRORS_H

#include <array>
#include <cstdint>

namespace k {

// A sentence for a known number of the drawing layer or of a module, else
// "error N"; ends in a zero. Needs no memory, which may be the error.
std::array<char, 64> EnglishError(std::int32_t error);

}  // namespace k

#endif
