// Sections on POSIX systems: a file without a name, so its descriptor stays open
// during the life of the section.
#include <sys/mman.h>

#include <cerrno>
#include <utility>

#include "host/vetrix/files/backing_file_posix.h"
#include "host/vetrix/files/section.h"
#include "host/vetrix/system/system_calls_posix.h"
#include "vetrix_host.h"

namespace vetrix {

// Made before the file is opened: an exception must not leak a descriptor.
struct Section::Handles {
  Handles() = default;
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;
  ~Handles() { Close(); }
  void Close() {
    if (descriptor >= 0) system::Close(std::exchange(descriptor, -1));
  }
  int descriptor = -1;
};

Section::Section(std::uint64_t size) : size_(size), handles_(std::make_unique<Handles>()) {
  handles_->descriptor = OpenBackingFile(host::FindMappedFolder().path);
  ReserveSpace(handles_->descriptor, size);
}

Section::~Section() = default;

void* Section::Map(std::error_code& error) {
  if (view_ != nullptr) return view_;
  void* view = system::Map(handles_->descriptor, size_);
  if (view == MAP_FAILED) {
    error.assign(errno, std::generic_category());
  } else {
    view_ = view;
  }
  return view_;
}

bool Section::Unmap(std::error_code& error) {
  if (view_ == nullptr) return true;
  if (system::Unmap(view_, size_) != 0) {
    error.assign(errno, std::generic_category());
    return false;
  }
  view_ = nullptr;
  return true;
}

// If Truncate fails, the file keeps its space until its view is unmapped.
void Section::ReleaseSpace() {
  system::Truncate(handles_->descriptor, 0);
  handles_->Close();
}

}  // namespace vetrix
