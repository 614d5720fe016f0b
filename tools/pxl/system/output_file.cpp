// Temporary files that are renamed when complete.
#include "tools/pxl/system/output_file.h"

#include <cerrno>
#include <cstring>
#include <random>
#include <system_error>

#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/operating_system.h"

namespace pxl {
namespace {

namespace fs = std::filesystem;

// More than enough: the names are random.
constexpr int kAttempts = 16;

fs::path FolderOf(const fs::path& path) {
  return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// Returns a descriptor, or -1 with errno. The path is complete before the file is
// created: lack of memory must not leave a file behind.
int CreateTemporary(const fs::path& target, fs::path& place) {
  std::random_device random;
  for (int i = 0; i < kAttempts; ++i) {
    // Not derived from the name, which may be as long as a name can be.
    place = FolderOf(target) / (".pxl-" + std::to_string(random()) + ".tmp");
    const int descriptor = CreateNewFile(place);
    if (descriptor >= 0) return descriptor;
    if (errno != EEXIST) break;
  }
  place.clear();
  return -1;
}

}  // namespace

void CheckOutputPlace(const fs::path& path) {
  std::error_code error;
  const fs::path folder = FolderOf(path);
  if (!fs::is_directory(folder, error)) {
    throw Failure(path.string(), "no such folder: " + folder.string());
  }
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) throw Failure(path.string(), "is a folder");
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw Failure(path.string(), "is not a regular file");
  }
}

void RefuseInput(const fs::path& output, const fs::path& input) {
  std::error_code error;
  if (fs::equivalent(output, input, error)) {
    throw UsageError(output.string(), "is an input as well");
  }
}

OutputFile::OutputFile(const fs::path& path) : name_(path), target_(path) {
  CheckOutputPlace(path);
  std::error_code error;
  // A link remains a link; the file that it points to is replaced.
  if (fs::is_symlink(path, error)) target_ = fs::weakly_canonical(path, error);
  const int descriptor = CreateTemporary(target_, temporary_.path);
  if (descriptor >= 0) {
    buffer_ = Buffer(descriptor, std::ios::in | std::ios::out | std::ios::binary);
  }
  if (!buffer_.is_open()) {
    throw Failure(name_.string(),
                  std::string("cannot write there: ") + std::strerror(errno != 0 ? errno : EIO));
  }
}

OutputFile::Temporary::~Temporary() {
  if (path.empty()) return;
  std::error_code ignored;
  fs::remove(path, ignored);
}

void OutputFile::Commit() {
  errno = 0;
  if (buffer_.close() == nullptr || !stream_) {
    throw Failure(name_.string(),
                  std::string("cannot write: ") + std::strerror(errno != 0 ? errno : EIO));
  }
  std::error_code error;
  fs::rename(temporary_.path, target_, error);
  if (error) throw Failure(name_.string(), "cannot write: " + error.message());
  temporary_.path.clear();
}

}  // namespace pxl
