// Standard streams and exceptions as the OpenEXR library uses them.
#ifndef TOOLS_PXL_FORMATS_EXR_OPENEXR_STREAMS_H
#define TOOLS_PXL_FORMATS_EXR_OPENEXR_STREAMS_H

#include <ImfIO.h>

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <new>
#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {

class ExrInput : public Imf::IStream {
 public:
  explicit ExrInput(std::istream& stream) : Imf::IStream("picture"), stream_(stream) {}

  bool read(char* data, int count) override;
  std::uint64_t tellg() override;
  void seekg(std::uint64_t position) override;
  void clear() override;

  // Throws Failure if the system failed to read; the library may have reported
  // another cause.
  void RefuseUnreadable() const;

 private:
  void KeepReason();

  std::istream& stream_;
  std::string reason_;  // of the first failure to read
};

class ExrOutput : public Imf::OStream {
 public:
  explicit ExrOutput(std::ostream& stream) : Imf::OStream("picture"), stream_(stream) {}

  void write(const char* data, int count) override;
  // Throws nothing: the library calls it in a destructor as well.
  std::uint64_t tellp() override;
  void seekp(std::uint64_t position) override;

  // Whether every call of tellp succeeded.
  [[nodiscard]] bool PlacesKnown() const { return placesKnown_; }

 private:
  std::ostream& stream_;
  bool placesKnown_ = true;
};

// Calls the library; throws Failure with `what` and the reason for any exception.
template <typename Work>
void CallOpenExr(const std::string& what, const Work& work) {
  try {
    work();
  } catch (const std::bad_alloc&) {
    throw Failure("not enough memory");
  } catch (const std::exception& problem) {
    throw Failure(what + ": " + problem.what());
  }
}

}  // namespace pxl

#endif
