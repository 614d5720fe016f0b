// All calls of mapped files to a POSIX system.
#include "host/vetrix/system/system_calls_posix.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>

namespace vetrix::system {

int GetFileSizeLimit(rlimit* limit) {
  return getrlimit(RLIMIT_FSIZE, limit);
}

int Open(const char* path, int flags, mode_t mode) {
  return open(path, flags, mode);
}

int MakeTemporary(char* path, int flags) {
  return mkostemp(path, flags);
}

int Unlink(const char* path) {
  return unlink(path);
}

int Allocate(int descriptor, off_t size) {
  return posix_fallocate(descriptor, 0, size);
}

int Truncate(int descriptor, off_t size) {
  return ftruncate(descriptor, size);
}

int Close(int descriptor) {
  return close(descriptor);
}

void* Map(int descriptor, std::size_t size) {
  return mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
}

int Unmap(void* view, std::size_t size) {
  return munmap(view, size);
}

}  // namespace vetrix::system
