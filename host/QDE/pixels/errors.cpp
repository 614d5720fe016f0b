// Keeps the error of the last call.
#include "host/QDE/pixels/errors.h"

#include <atomic>

#include "QDE_host.h"

namespace qde {
namespace {

std::atomic<std::int16_t> theError{kNoError};

}  // namespace

std::int16_t SetError(Error error) {
  theError = error;
  return error;
}

}  // namespace qde

std::int16_t QDE_Error() {
  return qde::theError;
}
