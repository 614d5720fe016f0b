#include "backing_file_posix.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <limits>
#include <system_error>

namespace vetrix {
namespace {

[[noreturn]] void Throw(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

std::uint64_t LargestFile() {
  rlimit limit{};
  const bool limited =
      getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != rlim_t{RLIM_INFINITY};
  constexpr std::uint64_t kLargestOffset = std::numeric_limits<off_t>::max();
  return limited && limit.rlim_cur < kLargestOffset ? limit.rlim_cur : kLargestOffset;
}

}  // namespace

int OpenUnnamedFile(const std::string& directory) {
  // With O_EXCL the file can never be given a name.
  const int descriptor =
      open(directory.c_str(), O_TMPFILE | O_EXCL | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (descriptor < 0) Throw(errno, "cannot make an unnamed file in " + directory);
  return descriptor;
}

int OpenAndUnlinkFile(const std::string& directory) {
  std::string path = directory + "/vetrix.XXXXXX";
  const int descriptor = mkostemp(path.data(), O_CLOEXEC);
  if (descriptor < 0) Throw(errno, "cannot make a file in " + directory);
  if (unlink(path.c_str()) == 0) return descriptor;
  const int error = errno;
  close(descriptor);
  Throw(error, "cannot take the name from " + path);
}

int OpenBackingFile(const std::string& directory) {
  try {
    return OpenUnnamedFile(directory);
  } catch (const std::system_error&) {
    // Systems differ in the error they give when they lack it.
    return OpenAndUnlinkFile(directory);
  }
}

void ReserveSpace(int descriptor, std::uint64_t size) {
  const std::string bytes = std::to_string(size) + " bytes";
  if (size > LargestFile()) Throw(EFBIG, bytes + " are over the limit for files");
  int error = 0;
  do {
    error = posix_fallocate(descriptor, 0, static_cast<off_t>(size));
  } while (error == EINTR);
  if (error != 0) Throw(error, "cannot reserve " + bytes + " for a mapped file");
}

}  // namespace vetrix
