// Errors of streams: the end of a file, distinguished from a failure of the system.
#ifndef TOOLS_PXL_SYSTEM_STREAM_ERRORS_H
#define TOOLS_PXL_SYSTEM_STREAM_ERRORS_H

#include <cerrno>
#include <cstring>
#include <istream>
#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {

// The system's text for a failure that has just happened.
inline std::string SystemReason() {
  return std::strerror(errno != 0 ? errno : EIO);
}

// The reason why a stream to be written failed, with errno cleared before.
inline std::string WriteReason() {
  return errno != 0 ? std::strerror(errno) : "the stream takes no more";
}

// Throws Failure if a read failed for any other reason than the end.
inline void RefuseBroken(const std::istream& stream) {
  if (stream.bad()) throw Failure("cannot read: " + SystemReason());
}

// Returns to the start after the first bytes were read. Throws Failure if they could
// not be read; fewer bytes are no error.
inline void ReturnToStart(std::istream& stream) {
  RefuseBroken(stream);
  stream.clear();
  errno = 0;
  stream.seekg(0);
  if (!stream) throw Failure("cannot read: " + SystemReason());
}

}  // namespace pxl

#endif
