// The layer's error: what the last call that can fail came to.
#ifndef QDE_ERRORS_H
#define QDE_ERRORS_H

#include <cstdint>

#include "QDE_host.h"

namespace qde {

// Also carries the errors that a host asks for, whatever they are.
enum Error : std::int16_t {
  kNoError = 0,
  kIllegalParameter = QDE_Err_PARAMETER,
  kMemoryFull = QDE_Err_MEMORY_FULL,
  kPurged = QDE_Err_PURGED,
  kDepth = QDE_Err_DEPTH
};

// Keeps the error for QDE_Error, and gives it back for the caller to return.
std::int16_t SetError(Error error);

}  // namespace qde

#endif
