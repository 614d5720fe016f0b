#include "host/vetrix/files/backing_file_posix.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <system_error>

#include "host/vetrix/system/system_calls_posix.h"

namespace vetrix {
namespace {

[[noreturn]] void Throw(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

std::uint64_t LargestFile() {
  rlimit limit{};
  const bool limited =
      system::GetFileSizeLimit(&limit) == 0 && limit.rlim_cur != rlim_t{RLIM_INFINITY};
  constexpr std::uint64_t kLargestOffset = std::numeric_limits<off_t>::max();
  return limited && limit.rlim_cur < kLargestOffset ? limit.rlim_cur : kLargestOffset;
}

// Some volumes let a signal into these calls.
template <typename Call>
int Uninterrupted(Call call) {
  int result = 0;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

int MakeTemporary(std::string& path) {
  const std::string pattern = path;
  return Uninterrupted([&] {
    path = pattern;
    return system::MakeTemporary(path.data(), O_CLOEXEC);
  });
}

bool TakeName(const std::string& path) {
  return Uninterrupted([&] { return system::Unlink(path.c_str()); }) == 0;
}

}  // namespace

int OpenUnnamedFile(const std::string& directory) {
  // With O_EXCL the file can never be given a name.
  constexpr int kFlags = O_TMPFILE | O_EXCL | O_RDWR | O_CLOEXEC;
  const int descriptor =
      Uninterrupted([&] { return system::Open(directory.c_str(), kFlags, S_IRUSR | S_IWUSR); });
  if (descriptor < 0) Throw(errno, "cannot make an unnamed file in " + directory);
  return descriptor;
}

int OpenAndUnlinkFile(const std::string& directory) {
  std::string path = directory + "/vetrix.XXXXXX";
  const int descriptor = MakeTemporary(path);
  if (descriptor < 0) Throw(errno, "cannot make a file in " + directory);
  bool taken = TakeName(path);
  // What was the matter for a moment may have passed.
  if (!taken) taken = TakeName(path);
  if (taken) return descriptor;
  const int error = errno;
  system::Close(descriptor);
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
    error = system::Allocate(descriptor, static_cast<off_t>(size));
  } while (error == EINTR);
  if (error != 0) Throw(error, "cannot reserve " + bytes + " for a mapped file");
}

}  // namespace vetrix
