// Sections on Windows: a file with a random name that other processes cannot open.
// The system deletes it when its handle is closed, also by a crash. Since it is
// marked as temporary, it is written to the volume only when memory is short.
#include <windows.h>

#include <filesystem>
#include <limits>
#include <random>
#include <system_error>

#include "host/utf8_path.h"
#include "host/vetrix/files/section.h"
#include "vetrix_host.h"

namespace vetrix {
namespace {

namespace fs = std::filesystem;

// The names are random, so collisions are rare.
constexpr int kAttempts = 16;

[[noreturn]] void Throw(std::errc error, const std::string& what) {
  throw std::system_error(std::make_error_code(error), what);
}

[[noreturn]] void ThrowLastError(const std::string& what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

HANDLE CreateBackingFile(const fs::path& path) {
  constexpr DWORD kNoSharing = 0;
  return CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, kNoSharing, nullptr,
                     CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
}

HANDLE OpenBackingFile(const fs::path& directory) {
  std::random_device random;
  for (int i = 0; i < kAttempts; ++i) {
    const fs::path path = directory / ("vetrix." + std::to_string(random()) + ".tmp");
    HANDLE file = CreateBackingFile(path);
    if (file != INVALID_HANDLE_VALUE) return file;
    if (GetLastError() != ERROR_FILE_EXISTS) break;
  }
  ThrowLastError("cannot make a file in " + Utf8OfPath(directory));
}

// Extends the file to its size and reserves space for it on the volume.
void ReserveSpace(HANDLE file, std::uint64_t size) {
  const std::string bytes = std::to_string(size) + " bytes";
  if (size > std::uint64_t{std::numeric_limits<LONGLONG>::max()}) {
    Throw(std::errc::file_too_large, bytes + " exceed the limit on file sizes");
  }
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(size);
  if (SetFilePointerEx(file, end, nullptr, FILE_BEGIN) == 0 || SetEndOfFile(file) == 0) {
    ThrowLastError("cannot reserve " + bytes + " for a mapped file");
  }
}

}  // namespace

// Made before the file is opened: an exception must not leak a handle.
struct Section::Handles {
  Handles() = default;
  Handles(const Handles&) = delete;
  Handles& operator=(const Handles&) = delete;
  ~Handles() {
    if (section != nullptr) CloseHandle(section);
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
  }

  HANDLE file = INVALID_HANDLE_VALUE;
  HANDLE section = nullptr;
};

Section::Section(std::uint64_t size) : size_(size), handles_(std::make_unique<Handles>()) {
  handles_->file = OpenBackingFile(PathOfUtf8(host::FindMappedFolder().path));
  ReserveSpace(handles_->file, size);
  // Without a name, so that other processes cannot open it.
  handles_->section = CreateFileMappingW(handles_->file, nullptr, PAGE_READWRITE, 0, 0, nullptr);
  if (handles_->section == nullptr) ThrowLastError("cannot prepare a file for mapping");
}

Section::~Section() = default;

void* Section::Map(std::error_code& error) {
  if (view_ != nullptr) return view_;
  view_ = MapViewOfFile(handles_->section, FILE_MAP_ALL_ACCESS, 0, 0, 0);
  if (view_ == nullptr) error.assign(static_cast<int>(GetLastError()), std::system_category());
  return view_;
}

bool Section::Unmap(std::error_code& error) {
  if (view_ == nullptr) return true;
  if (UnmapViewOfFile(view_) == 0) {
    error.assign(static_cast<int>(GetLastError()), std::system_category());
    return false;
  }
  view_ = nullptr;
  return true;
}

// Does nothing: Windows cannot shrink a file while it is mapped.
void Section::ReleaseSpace() {
}

}  // namespace vetrix
