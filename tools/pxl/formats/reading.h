// Streams that end, told from streams that the system fails to read.
#ifndef TOOLS_PXL_FORMATS_READING_H
#define TOOLS_PXL_FORMATS_READING_H

#include <cerrno>
#include <cstring>
#include <istream>
#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {

// What the system says of a failure that has just happened.
inline std::string SystemReason() {
  return std::strerror(errno != 0 ? errno : EIO);
}

// Throws Failure if a read broke off for any other reason than the end.
inline void RefuseBroken(const std::istream& stream) {
  if (stream.bad()) throw Failure("cannot read: " + SystemReason());
}

// Goes back after a look at the first bytes. Throws Failure if they could not be
// read; that there were fewer is no matter.
inline void ReturnToStart(std::istream& stream) {
  RefuseBroken(stream);
  stream.clear();
  errno = 0;
  stream.seekg(0);
  if (!stream) throw Failure("cannot read: " + SystemReason());
}

}  // namespace pxl

#endif
