// The layer's error: what the last call that can fail came to.
#ifndef QDE_ERRORS_H
#define QDE_ERRORS_H

#include <cstdint>

namespace qde {

enum Error : std::int16_t { kNoError = 0, kIllegalParameter = -50, kMemoryFull = -108 };

// Keeps the error for QDE_Error, and gives it back for the caller to return.
std::int16_t SetError(Error error);

}  // namespace qde

#endif
