// Memory-mapped files.
#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>
#include <utility>

#include "host/vetrix/files/section.h"
#include "platform/vetrix.h"

namespace vetrix {
namespace {

[[noreturn]] void Throw(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

// A name for messages: cut to a short length, without control characters.
std::string Printable(const std::string& name) {
  constexpr std::size_t kLongest = 80;
  std::string text = name.substr(0, kLongest);
  const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
  std::ranges::replace_if(text, isControl, '?');
  return "'" + text + (name.size() > kLongest ? "...'" : "'");
}

}  // namespace

struct MemoryMappedFile::Impl {
  Impl(std::string label, std::uint64_t bytes)
      : name(std::move(label)), size(bytes), section(std::make_unique<Section>(bytes)) {}
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() { Section::Discard(std::move(section)); }

  void* Map() const {
    std::error_code error;
    void* view = section->Map(error);
    if (view == nullptr) throw std::system_error(error, "cannot map " + Printable(name));
    return view;
  }
  void Unmap() const {
    std::error_code error;
    if (!section->Unmap(error)) throw std::system_error(error, "cannot unmap " + Printable(name));
  }

  std::string name;
  std::uint64_t size;
  std::unique_ptr<Section> section;
};

MemoryMappedFile::MemoryMappedFile() = default;

MemoryMappedFile::~MemoryMappedFile() {
  delete impl_;
}

// The mode is for systems that share files by name, and has no effect here.
void MemoryMappedFile::Init(const std::string& name, std::uint64_t size, std::uint32_t) {
  if (impl_ != nullptr) Throw(EEXIST, "a mapped file already exists for " + Printable(name));
  if (size == 0) Throw(EINVAL, "the size is 0 for " + Printable(name));
  impl_ = new Impl(name, size);
}

void* MemoryMappedFile::GetAddress() {
  if (impl_ == nullptr) Throw(EBADF, "there is no mapped file");
  return impl_->Map();
}

std::uint64_t MemoryMappedFile::Size() const {
  return impl_ != nullptr ? impl_->size : 0;
}

void MemoryMappedFile::UnmapMemory() {
  if (impl_ != nullptr) impl_->Unmap();
}

// Does nothing: the file has no name with which it could be opened again.
void MemoryMappedFile::CloseFileHandleIfPossible() {
}

void MemoryMappedFile::Reset() {
  delete std::exchange(impl_, nullptr);
}

}  // namespace vetrix
