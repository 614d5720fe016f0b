// Files and views of vetrix, with calls that fail.
#include "tests/support/failing_system_calls/file_calls_posix.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <set>

#include "host/vetrix/system/system_calls_posix.h"

using failing_system_calls::ErrorOf;
using failing_system_calls::Fails;

namespace {

std::set<int> descriptors;
std::set<void*> views;

int Opened(int descriptor) {
  if (descriptor >= 0) descriptors.insert(descriptor);
  return descriptor;
}

}  // namespace

namespace failing_system_calls {

std::size_t OpenDescriptors() {
  return descriptors.size();
}

std::size_t Views() {
  return views.size();
}

}  // namespace failing_system_calls

namespace vetrix::system {

int GetFileSizeLimit(rlimit* limit) {
  return Fails("getrlimit") ? -1 : getrlimit(RLIMIT_FSIZE, limit);
}

int Open(const char* path, int flags, mode_t mode) {
  return Fails("open") ? -1 : Opened(open(path, flags, mode));
}

int MakeTemporary(char* path, int flags) {
  return Fails("mkostemp") ? -1 : Opened(mkostemp(path, flags));
}

int Unlink(const char* path) {
  return Fails("unlink") ? -1 : unlink(path);
}

int Allocate(int descriptor, off_t size) {
  const int error = ErrorOf("posix_fallocate");
  return error != 0 ? error : posix_fallocate(descriptor, 0, size);
}

int Truncate(int descriptor, off_t size) {
  return Fails("ftruncate") ? -1 : ftruncate(descriptor, size);
}

// As on Linux, the descriptor is closed even if the call fails.
int Close(int descriptor) {
  descriptors.erase(descriptor);
  close(descriptor);
  return Fails("close") ? -1 : 0;
}

void* Map(int descriptor, std::size_t size) {
  if (Fails("mmap")) return MAP_FAILED;
  void* view = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
  if (view != MAP_FAILED) views.insert(view);
  return view;
}

int Unmap(void* view, std::size_t size) {
  if (Fails("munmap")) return -1;
  views.erase(view);
  return munmap(view, size);
}

}  // namespace vetrix::system
