// Loaded before the C library: each block that the module or the libraries
// beneath its frames and surfaces allocate lies between inaccessible pages, at
// the very end of its own pages (PXL_FENCES=behind) or at their very start
// (PXL_FENCES=before), and no address is used twice. Any access next to a block,
// or to a freed one, crashes. The rest of a block's pages is filled with a
// pattern, which is compared when the block is freed. Mapped files get fences as
// well.
#include <dlfcn.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>

// The C library's own.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kArenaPages = std::size_t{1} << 28;
constexpr std::size_t kWidestAlignment = 64;
constexpr int kFill = 0xC7;

[[noreturn]] void Die(std::string_view reason) {
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, reason.data(), reason.size());
  std::abort();
}

char* Reserve(std::size_t bytes, int protection) {
  void* place =
      mmap64(nullptr, bytes, protection, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  if (place == MAP_FAILED) Die("fences: no room for the arena\n");
  return static_cast<char*>(place);
}

// Addresses that are handed out one after the other, with the sizes of what
// begins on each page.
class Arena {
 public:
  bool Holds(const void* address) const {
    return address >= start_ && address < start_ + kArenaPages * kPage;
  }

  // Inaccessible pages, with one more on either side.
  char* Take(std::size_t pages) {
    const std::size_t first = next_.fetch_add(pages + 1) + 1;
    if (first + pages >= kArenaPages) Die("fences: the arena is used up\n");
    return start_ + first * kPage;
  }

  // Of the block that begins on the page of the address.
  std::size_t& SizeAt(const void* address) {
    return sizes_[static_cast<std::size_t>(static_cast<const char*>(address) - start_) / kPage];
  }

 private:
  char* start_ = Reserve(kArenaPages * kPage, PROT_NONE);
  std::size_t* sizes_ = reinterpret_cast<std::size_t*>(
      Reserve(kArenaPages * sizeof(std::size_t), PROT_READ | PROT_WRITE));
  std::atomic<std::size_t> next_ = 0;
};

Arena& TheArena() {
  static Arena arena;
  return arena;
}

std::size_t PagesFor(std::size_t size) {
  return (size + kPage - 1) / kPage;
}

bool AreBehind() {
  static const bool behind = [] {
    const char* side = std::getenv("PXL_FENCES");
    return side == nullptr || std::string_view(side) == "behind";
  }();
  return behind;
}

// The start of the pages, or as close to their end as the size's own alignment
// allows, which is that of all that can be in the block.
std::size_t OffsetOf(std::size_t size) {
  if (!AreBehind()) return 0;
  const std::size_t alignment = std::min(size & (~size + 1), kWidestAlignment);
  return (PagesFor(size) * kPage - size) / alignment * alignment;
}

char* PageOf(void* address) {
  return reinterpret_cast<char*>(reinterpret_cast<std::uintptr_t>(address) / kPage * kPage);
}

bool IsFilled(const char* begin, const char* end) {
  return std::all_of(begin, end, [](char c) { return static_cast<unsigned char>(c) == kFill; });
}

void* AllocateFenced(std::size_t size) {
  const std::size_t pages = PagesFor(size);
  char* start = TheArena().Take(pages);
  if (mprotect(start, pages * kPage, PROT_READ | PROT_WRITE) != 0) return nullptr;
  TheArena().SizeAt(start) = size;
  const std::size_t offset = OffsetOf(size);
  std::memset(start, kFill, offset);
  std::memset(start + offset + size, kFill, pages * kPage - offset - size);
  return start + offset;
}

void Forbid(char* start, std::size_t pages) {
  mmap64(start, pages * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_FIXED,
         -1, 0);
}

void FreeFenced(void* block) {
  char* start = PageOf(block);
  const std::size_t size = TheArena().SizeAt(start);
  const std::size_t pages = PagesFor(size);
  auto* first = static_cast<char*>(block);
  if (!IsFilled(start, first) || !IsFilled(first + size, start + pages * kPage)) {
    Die("fences: a write next to a block\n");
  }
  Forbid(start, pages);
}

// Where the code of a library lies.
struct Range {
  std::uintptr_t begin = 0, end = 0;
};

struct Callers {
  std::array<Range, 3> ranges{};
  std::size_t count = 0;
};

bool IsWatched(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  return name.starts_with("libPXL.so") || name == "libK.so" || name == "libvetrix.so";
}

int Remember(dl_phdr_info* library, std::size_t /*size*/, void* context) {
  auto& callers = *static_cast<Callers*>(context);
  if (!IsWatched(library->dlpi_name) || callers.count == callers.ranges.size()) return 0;
  Range& range = callers.ranges[callers.count++];
  for (int i = 0; i < library->dlpi_phnum; ++i) {
    const auto& part = library->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
    range.begin = library->dlpi_addr + part.p_vaddr;
    range.end = range.begin + part.p_memsz;
  }
  return 0;
}

// All libraries are there before anything in them runs.
const Callers& TheCallers() {
  static const Callers callers = [] {
    Callers found;
    dl_iterate_phdr(Remember, &found);
    return found;
  }();
  return callers;
}

bool IsCaller(const void* returnAddress) {
  const auto place = reinterpret_cast<std::uintptr_t>(returnAddress);
  const auto& ranges = TheCallers().ranges;
  return std::any_of(ranges.begin(), ranges.end(), [place](const Range& range) {
    return place >= range.begin && place < range.end;
  });
}

void* MapFenced(std::size_t size, int protection, int flags, int file, off_t offset) {
  const std::size_t pages = PagesFor(size);
  char* start = TheArena().Take(pages);
  TheArena().SizeAt(start) = size;
  return mmap64(start, size, protection, flags | MAP_FIXED, file, offset);
}

}  // namespace

extern "C" {

bool IsFenced(const void* address) {
  return TheArena().Holds(address);
}

void* malloc(std::size_t size) {
  const bool fenced = size != 0 && IsCaller(__builtin_return_address(0));
  return fenced ? AllocateFenced(size) : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
  const bool fenced = count * size != 0 && IsCaller(__builtin_return_address(0));
  if (!fenced) return __libc_calloc(count, size);
  void* block = AllocateFenced(count * size);
  if (block != nullptr) std::memset(block, 0, count * size);
  return block;
}

void* realloc(void* block, std::size_t size) {
  if (IsFenced(block)) Die("fences: realloc of a guarded block is not supported\n");
  return __libc_realloc(block, size);
}

void free(void* block) {
  if (IsFenced(block)) {
    FreeFenced(block);
  } else {
    __libc_free(block);
  }
}

void* mmap(void* address, std::size_t size, int protection, int flags, int file, off_t offset) {
  const bool fenced = (flags & MAP_SHARED) != 0 && IsCaller(__builtin_return_address(0));
  return fenced ? MapFenced(size, protection, flags, file, offset)
                : mmap64(address, size, protection, flags, file, offset);
}

int munmap(void* address, std::size_t size) {
  static const auto real = reinterpret_cast<decltype(&munmap)>(dlsym(RTLD_NEXT, "munmap"));
  if (!IsFenced(address)) return real(address, size);
  Forbid(static_cast<char*>(address), PagesFor(size));
  return 0;
}

}  // extern "C"
