// Standard streams for the OpenEXR library, with the reasons of their failures.
#include "tools/pxl/formats/exr/openexr_streams.h"

#include <cerrno>
#include <cstring>
#include <istream>
#include <ostream>

#include "tools/pxl/system/stream_errors.h"

namespace pxl {

bool ExrInput::read(char* data, int count) {
  errno = 0;
  stream_.read(data, count);
  if (stream_.bad()) KeepReason();
  if (!stream_) throw Failure("the file ends too early");
  return stream_.peek() != std::istream::traits_type::eof();
}

std::uint64_t ExrInput::tellg() {
  return static_cast<std::uint64_t>(stream_.tellg());
}

void ExrInput::seekg(std::uint64_t position) {
  stream_.clear();
  errno = 0;
  stream_.seekg(static_cast<std::streamoff>(position));
  // Without an error of the system, the position is outside of the file.
  if (!stream_ && errno != 0) KeepReason();
}

void ExrInput::clear() {
  stream_.clear();
}

void ExrInput::RefuseUnreadable() const {
  if (!reason_.empty()) throw Failure("cannot read: " + reason_);
}

void ExrInput::KeepReason() {
  if (reason_.empty()) reason_ = SystemReason();
}

void ExrOutput::write(const char* data, int count) {
  errno = 0;
  stream_.write(data, count);
  if (!stream_) throw Failure(WriteReason());
}

std::uint64_t ExrOutput::tellp() {
  const std::ostream::pos_type place = stream_.tellp();
  placesKnown_ = placesKnown_ && place != std::ostream::pos_type(-1);
  return static_cast<std::uint64_t>(std::streamoff{place});
}

void ExrOutput::seekp(std::uint64_t position) {
  stream_.seekp(static_cast<std::streamoff>(position));
}

}  // namespace pxl
