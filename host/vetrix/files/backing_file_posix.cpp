// Makes the files behind mapped memory on POSIX systems.
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

// On some volumes a signal can interrupt these calls.
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

bool RemoveName(const std::string& path) {
  return Uninterrupted([&] { return system::Unlink(path.c_str()); }) == 0;
}

}  // namespace

int OpenUnnamedFile(const std::string& directory) {
  // O_EXCL: the file can never get a name.
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
  bool removed = RemoveName(path);
  // The cause of the failure may be temporary.
  if (!removed) removed = RemoveName(path);
  if (removed) return descriptor;
  const int error = errno;
  system::Close(descriptor);
  Throw(error, "cannot remove the name " + path);
}

int OpenBackingFile(const std::string& directory) {
  try {
    return OpenUnnamedFile(directory);
  } catch (const std::system_error&) {
    // Systems without unnamed files return different errors, so all are accepted.
    return OpenAndUnlinkFile(directory);
  }
}

void ReserveSpace(int descriptor, std::uint64_t size) {
  const std::string bytes = std::to_string(size) + " bytes";
  if (size > LargestFile()) Throw(EFBIG, bytes + " exceed the limit on file sizes");
  int error = 0;
  do {
    error = system::Allocate(descriptor, static_cast<off_t>(size));
  } while (error == EINTR);
  if (error != 0) Throw(error, "cannot reserve " + bytes + " for a mapped file");
}

}  // namespace vetrix
