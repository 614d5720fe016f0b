// Sizes of the rows, and the memory that they may take.
#include "bench/rows/rows.h"

#include <fmt/format.h>

#include "bench/harness/machine.h"
#include "bench/harness/session.h"

namespace bench {

std::vector<Size> CommonSizes() {
  std::vector<Size> sizes = {{256, 256}, {1920, 1080}};
  if (!CurrentSession().quick) sizes.push_back({3840, 2160});
  return sizes;
}

RowName NameFor(const std::string& work, const Size& size) {
  return {work, fmt::format("{}x{}", size.width, size.height),
          static_cast<double>(size.width) * size.height};
}

void AddRowIfFits(const RowName& name, std::uint64_t bytes, const Setup& setUp) {
  if (bytes > FreeMemory() / 2) {
    AddRemark(fmt::format("left out: {} at {}, whose {} MiB are more than half of the free memory",
                          name.work, name.size, bytes >> 20));
  } else {
    AddRow(name, setUp);
  }
}

}  // namespace bench
