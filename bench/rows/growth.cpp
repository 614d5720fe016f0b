// The same work at sizes from an icon to an eighth of a gigapixel: its time has to grow
// like that of the hollow copy.
#include "bench/rows/growth.h"

#include <fmt/format.h>

#include "bench/harness/session.h"
#include "bench/rows/conversions.h"
#include "bench/rows/drawing.h"
#include "bench/rows/rows.h"

namespace bench {
namespace {

constexpr int kWidestSurface = 4095;

std::vector<Size> GrowingSizes() {
  std::vector<Size> sizes = {{64, 64}, {128, 128}, {256, 256}, {512, 512}, {1024, 1024}};
  if (CurrentSession().quick) return sizes;
  sizes.insert(sizes.end(),
               {{1920, 1080}, {3840, 2160}, {4095, 4095}, {7680, 4320}, {16000, 8000}});
  return sizes;
}

void AddBlits(int from, int to) {
  for (const Size& size : GrowingSizes()) {
    const RowName name = NameFor(fmt::format("growth blit {} to {}", from, to), size);
    const auto bytes =
        static_cast<std::uint64_t>(name.scale) * static_cast<unsigned>(from + to) / 8;
    AddRowIfFits(name, bytes, [=] { return SetUpBlit(from, to, size, false); });
  }
}

}  // namespace

void AddGrowth() {
  AddBlits(32, 64);
  AddBlits(32, 128);
  AddBlits(64, 32);
  AddBlits(128, 32);
  AddBlits(64, 64);
  AddBlits(128, 128);
  for (const Size& size : GrowingSizes()) {
    if (size.width > kWidestSurface) continue;
    AddRow(NameFor("growth draw 1:1", size), [size] { return SetUpDrawnCopy(size); });
  }
  AddRemark(
      fmt::format("surfaces end at {} pixels a row, and so does their series", kWidestSurface));
}

}  // namespace bench
