// A library to preload: counts the calls of a program to the C library from the start
// of main, by kind, and makes one of them fail.
//   PXL_FAILING_CALL=write:3     the third call of that kind fails
//   PXL_CALL_COUNTS=FILE         receives a line "kind count" for each kind
// Fortified calls would be inline functions of the header, not of the library.
#undef _FORTIFY_SOURCE

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Kind {
  const char* name;
  int error;
  std::atomic<long> calls{0};
};

Kind allocations{"allocation", ENOMEM};
Kind opens{"open", EMFILE};
Kind reads{"read", EIO};
Kind writes{"write", ENOSPC};
Kind seeks{"seek", EIO};
Kind closes{"close", EIO};
Kind renames{"rename", EACCES};
Kind folders{"mkdir", EACCES};
Kind maps{"map", ENOMEM};
Kind reserves{"reserve", ENOSPC};

constexpr std::array kKinds = {&allocations, &opens,   &reads,   &writes, &seeks,
                               &closes,      &renames, &folders, &maps,   &reserves};

std::atomic<bool> counting{false};
const Kind* failing = nullptr;
long failingCall = 0;

// Counts the call; returns whether it must fail, with errno set.
bool Fails(Kind& kind) {
  if (!counting) return false;
  const bool fails = ++kind.calls == failingCall && &kind == failing;
  if (fails) errno = kind.error;
  return fails;
}

// The function of that name in the libraries behind this one.
template <typename Function>
Function* Next(Function* /*type*/, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void ChooseFailingCall(const char* text) {
  const char* colon = text != nullptr ? std::strchr(text, ':') : nullptr;
  if (colon == nullptr) return;
  failingCall = std::strtol(colon + 1, nullptr, 10);
  for (const Kind* kind : kKinds) {
    const auto length = static_cast<std::size_t>(colon - text);
    if (std::strlen(kind->name) == length && std::strncmp(kind->name, text, length) == 0) {
      failing = kind;
    }
  }
}

void WriteCounts(const char* path) {
  std::FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;
  if (file == nullptr) return;
  for (const Kind* kind : kKinds) std::fprintf(file, "%s %ld\n", kind->name, kind->calls.load());
  std::fclose(file);
}

using Main = int(int, char**, char**);
Main* programMain = nullptr;

int CountedMain(int count, char** arguments, char** environment) {
  ChooseFailingCall(std::getenv("PXL_FAILING_CALL"));
  counting = true;
  const int code = programMain(count, arguments, environment);
  counting = false;
  WriteCounts(std::getenv("PXL_CALL_COUNTS"));
  return code;
}

mode_t ModeIn(int flags, va_list more) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(more, mode_t) : 0;
}

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

// Functions of the C library, and some of its own names for them.
// NOLINTBEGIN(bugprone-*,cert-dcl*,readability-inconsistent-*)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

int __libc_start_main(Main* program, int count, char** arguments, void (*start)(), void (*end)(),
                      void (*unload)(), void* stack) {
  static const auto next = Next(&__libc_start_main, "__libc_start_main");
  programMain = program;
  return next(CountedMain, count, arguments, start, end, unload, stack);
}

void* malloc(std::size_t size) {
  return Fails(allocations) ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  return Fails(allocations) ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
  return Fails(allocations) ? nullptr : __libc_realloc(block, size);
}
void* memalign(std::size_t alignment, std::size_t size) {
  return Fails(allocations) ? nullptr : __libc_memalign(alignment, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}
int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
  void* const found = memalign(alignment, size);
  if (found == nullptr) return ENOMEM;
  *block = found;
  return 0;
}

int open(const char* path, int flags, ...) {
  static const auto next = Next(&open, "open");
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeIn(flags, more);
  va_end(more);
  return Fails(opens) ? -1 : next(path, flags, mode);
}
int open64(const char* path, int flags, ...) {
  static const auto next = Next(&open64, "open64");
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeIn(flags, more);
  va_end(more);
  return Fails(opens) ? -1 : next(path, flags, mode);
}
std::FILE* fopen(const char* path, const char* mode) {
  static const auto next = Next(&fopen, "fopen");
  return Fails(opens) ? nullptr : next(path, mode);
}
std::FILE* fopen64(const char* path, const char* mode) {
  static const auto next = Next(&fopen64, "fopen64");
  return Fails(opens) ? nullptr : next(path, mode);
}

ssize_t read(int file, void* bytes, std::size_t count) {
  static const auto next = Next(&read, "read");
  return Fails(reads) ? -1 : next(file, bytes, count);
}
std::size_t fread(void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  static const auto next = Next(&fread, "fread");
  return Fails(reads) ? 0 : next(bytes, size, count, file);
}

ssize_t write(int file, const void* bytes, std::size_t count) {
  static const auto next = Next(&write, "write");
  return Fails(writes) ? -1 : next(file, bytes, count);
}
ssize_t writev(int file, const iovec* parts, int count) {
  static const auto next = Next(&writev, "writev");
  return Fails(writes) ? -1 : next(file, parts, count);
}
std::size_t fwrite(const void* bytes, std::size_t size, std::size_t count, std::FILE* file) {
  static const auto next = Next(&fwrite, "fwrite");
  return Fails(writes) ? 0 : next(bytes, size, count, file);
}

off_t lseek(int file, off_t offset, int from) noexcept {
  static const auto next = Next(&lseek, "lseek");
  return Fails(seeks) ? -1 : next(file, offset, from);
}
off64_t lseek64(int file, off64_t offset, int from) noexcept {
  static const auto next = Next(&lseek64, "lseek64");
  return Fails(seeks) ? -1 : next(file, offset, from);
}

// A close that fails closes the file nevertheless.
int close(int file) {
  static const auto next = Next(&close, "close");
  const int result = next(file);
  return Fails(closes) ? -1 : result;
}
int fclose(std::FILE* file) {
  static const auto next = Next(&fclose, "fclose");
  const int result = next(file);
  return Fails(closes) ? EOF : result;
}

int rename(const char* from, const char* to) noexcept {
  static const auto next = Next(&rename, "rename");
  return Fails(renames) ? -1 : next(from, to);
}
int mkdir(const char* path, mode_t mode) noexcept {
  static const auto next = Next(&mkdir, "mkdir");
  return Fails(folders) ? -1 : next(path, mode);
}

void* mmap(void* place, std::size_t size, int access, int flags, int file, off_t from) noexcept {
  static const auto next = Next(&mmap, "mmap");
  return Fails(maps) ? MAP_FAILED : next(place, size, access, flags, file, from);
}
void* mmap64(void* place, std::size_t size, int access, int flags, int file,
             off64_t from) noexcept {
  static const auto next = Next(&mmap64, "mmap64");
  return Fails(maps) ? MAP_FAILED : next(place, size, access, flags, file, from);
}

int posix_fallocate(int file, off_t from, off_t size) {
  static const auto next = Next(&posix_fallocate, "posix_fallocate");
  return Fails(reserves) ? ENOSPC : next(file, from, size);
}
int fallocate(int file, int mode, off_t from, off_t size) {
  static const auto next = Next(&fallocate, "fallocate");
  return Fails(reserves) ? -1 : next(file, mode, from, size);
}
int ftruncate(int file, off_t size) noexcept {
  static const auto next = Next(&ftruncate, "ftruncate");
  return Fails(reserves) ? -1 : next(file, size);
}

// NOLINTEND(bugprone-*,cert-dcl*,readability-inconsistent-*)
}  // extern "C"
#pragma GCC visibility pop
