// Memory-mapped files on POSIX systems. The file has no name, so the descriptor
// is the only way to reach it: it stays open for the life of the file.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include "backing_file_posix.h"
#include "platform/vetrix.h"

namespace vetrix {
namespace {

[[noreturn]] void Throw(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

// A name as it may stand in a message: any bytes may come in, one short line
// goes out.
std::string Printable(const std::string& name) {
  constexpr std::size_t kLongest = 80;
  std::string text = name.substr(0, kLongest);
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  std::ranges::replace_if(text, isControl, '?');
  return "'" + text + (name.size() > kLongest ? "...'" : "'");
}

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(number_); }
  int Get() const { return number_; }

 private:
  int number_;
};

}  // namespace

struct MemoryMappedFile::Impl {
  Impl(std::string label, std::uint64_t bytes)
      : name(std::move(label)), size(bytes), file(OpenBackingFile(BackingDirectory())) {
    ReserveSpace(file.Get(), size);
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() { Unmap(); }

  void Map() {
    void* address = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, file.Get(), 0);
    if (address == MAP_FAILED) Throw(errno, "cannot map " + Printable(name));
    view = address;
  }

  void Unmap() {
    if (view != nullptr) munmap(view, size);
    view = nullptr;
  }

  std::string name;
  std::uint64_t size;
  Descriptor file;
  void* view = nullptr;
};

MemoryMappedFile::MemoryMappedFile() = default;

MemoryMappedFile::~MemoryMappedFile() {
  delete impl_;
}

// The mode is for systems whose files must be shared by name; here it says
// nothing that is not already so.
void MemoryMappedFile::Init(const std::string& name, std::uint64_t size, std::uint32_t) {
  if (impl_ != nullptr) Throw(EEXIST, "a mapped file is already there for " + Printable(name));
  if (size == 0) Throw(EINVAL, "no bytes to map for " + Printable(name));
  impl_ = new Impl(name, size);
}

void* MemoryMappedFile::GetAddress() {
  if (impl_ == nullptr) Throw(EBADF, "there is no mapped file yet");
  if (impl_->view == nullptr) impl_->Map();
  return impl_->view;
}

std::uint64_t MemoryMappedFile::Size() const {
  return impl_ != nullptr ? impl_->size : 0;
}

void MemoryMappedFile::UnmapMemory() {
  if (impl_ != nullptr) impl_->Unmap();
}

// A file without a name could not be opened again, so its descriptor, one a
// live file, is never closed here.
void MemoryMappedFile::CloseFileHandleIfPossible() {
}

void MemoryMappedFile::Reset() {
  delete std::exchange(impl_, nullptr);
}

}  // namespace vetrix
