// The descriptor is the only way to reach the file: it stays open for the life
// of the file.
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

#include "backing_file_posix.h"
#include "section.h"
#include "vetrix_host.h"

namespace vetrix {

struct Section::Handles {
  explicit Handles(int number) : descriptor(number) {}
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;
  ~Handles() { close(descriptor); }

  int descriptor;
};

Section::Section(std::uint64_t size)
    : size_(size),
      handles_(std::make_unique<Handles>(OpenBackingFile(host::FindMappedFolder().path))) {
  ReserveSpace(handles_->descriptor, size);
}

Section::~Section() = default;

void* Section::Map(std::error_code& error) const {
  void* view = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, handles_->descriptor, 0);
  if (view != MAP_FAILED) return view;
  error.assign(errno, std::generic_category());
  return nullptr;
}

void Section::Unmap(void* view) const {
  munmap(view, size_);
}

}  // namespace vetrix
