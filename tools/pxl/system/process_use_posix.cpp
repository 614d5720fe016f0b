// The resources of this process on Linux.
#include <malloc.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/process_use.h"

namespace pxl {
namespace {

// One descriptor is that of the folder itself.
std::uint64_t CountDescriptors() {
  const std::filesystem::directory_iterator entries("/proc/self/fd");
  return static_cast<std::uint64_t>(std::distance(begin(entries), end(entries))) - 1;
}

}  // namespace

ProcessUse ReadProcessUse() {
  malloc_trim(0);
  const struct mallinfo2 heap = mallinfo2();
  std::uint64_t allPages = 0;
  std::uint64_t residentPages = 0;
  if (!(std::ifstream("/proc/self/statm") >> allPages >> residentPages)) {
    throw Failure("/proc/self/statm", "cannot be read");
  }
  const auto page = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  return {heap.uordblks + heap.hblkhd, allPages * page, residentPages * page, CountDescriptors()};
}

}  // namespace pxl
