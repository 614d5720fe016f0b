// English wording of error numbers.
#ifndef K_SYSTEM_ERRORS_H
#define K_SYSTEM_ERRORS_H

#include <cstdint>
#include <string>

namespace k {

// A sentence for a known number of the drawing layer or of a module, else
// "error N".
std::string EnglishError(std::int32_t error);

}  // namespace k

#endif
