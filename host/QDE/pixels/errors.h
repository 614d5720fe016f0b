// The layer's error: the result of the last call that can fail.
#ifndef QDE_ERRORS_H
#define QDE_ERRORS_H

#include <cstdint>

#include "QDE_host.h"

namespace qde {

// Errors that a host requests may have any other value.
enum Error : std::int16_t {
  kNoError = 0,
  kIllegalParameter = QDE_Err_PARAMETER,
  kMemoryFull = QDE_Err_MEMORY_FULL,
  kPurged = QDE_Err_PURGED,
  kDepth = QDE_Err_DEPTH
};

// Stores the error for QDE_Error, and returns it.
std::int16_t SetError(Error error);

}  // namespace qde

#endif
