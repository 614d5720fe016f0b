#include "tests/support/failing_calls/failing_calls_posix.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "host/vetrix/system/system_calls_posix.h"

namespace {

std::vector<failing_calls::Failure> asked;
std::vector<std::string> calls;
std::size_t failures = 0;
std::set<int> descriptors;
std::set<void*> views;

// The error of the call that is just made; 0 when it is to work.
int ErrorOf(const char* name) {
  calls.emplace_back(name);
  const auto found = std::find_if(asked.begin(), asked.end(),
                                  [](const auto& failure) { return failure.nth == calls.size(); });
  if (found == asked.end()) return 0;
  ++failures;
  return found->error;
}

bool Fails(const char* name) {
  const int error = ErrorOf(name);
  if (error != 0) errno = error;
  return error != 0;
}

int Opened(int descriptor) {
  if (descriptor >= 0) descriptors.insert(descriptor);
  return descriptor;
}

}  // namespace

namespace failing_calls {

void Begin(const std::vector<Failure>& wanted) {
  asked = wanted;
  calls.clear();
  failures = 0;
}

void End() {
  asked.clear();
}

const std::vector<std::string>& Calls() {
  return calls;
}

std::size_t Failures() {
  return failures;
}

std::size_t OpenDescriptors() {
  return descriptors.size();
}

std::size_t Views() {
  return views.size();
}

}  // namespace failing_calls

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

// What fails has closed the descriptor all the same, as Linux does it.
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
