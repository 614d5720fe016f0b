// Draws colours to an 8-bit world and searches the table for each.
#include "tests/support/drawing/nearest_colors.h"

#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace nearest {
namespace {

constexpr Rect kPlane = {0, 0, 256, 256};
static_assert(kPlane.bottom * kPlane.right == kMost);

GWorldPtr MakeWorld(std::int16_t depth, CTabHandle colors) {
  GWorldPtr world = nullptr;
  NewGWorld(&world, depth, &kPlane, colors, nullptr, 0);
  // Rows of 256 pixels have no padding.
  if (world == nullptr || LockPixels(GetPortPixMap(world)) == 0) {
    throw std::runtime_error("no world to compare in");
  }
  std::memset(GetPixBaseAddr(GetPortPixMap(world)), 0, kMost * static_cast<std::size_t>(depth / 8));
  return world;
}

std::uint8_t* PixelsOf(GWorldPtr world) {
  return reinterpret_cast<std::uint8_t*>(GetPixBaseAddr(GetPortPixMap(world)));
}

}  // namespace

Comparison::Comparison(const QDE_ColorTable& table) : table_(reference::TableOf(table)) {
  QDE_ColorTable copy = table;
  QDE_ColorTable* master = &copy;
  pixels_ = MakeWorld(32, nullptr);
  indices_ = MakeWorld(8, &master);
}

Comparison::~Comparison() {
  DisposeGWorld(indices_);
  DisposeGWorld(pixels_);
}

int Comparison::CountDifferences(const std::vector<reference::Rgb>& colors) const {
  std::uint8_t* pixel = PixelsOf(pixels_);
  for (const reference::Rgb& color : colors) {
    *pixel++ = 0;
    for (const int component : color) *pixel++ = static_cast<std::uint8_t>(component);
  }
  CopyBits(GetPortBitMapForCopyBits(pixels_), GetPortBitMapForCopyBits(indices_), &kPlane, &kPlane,
           0, nullptr);
  if (QDE_Error() != 0) return static_cast<int>(colors.size());
  int differences = 0;
  const std::uint8_t* index = PixelsOf(indices_);
  for (const reference::Rgb& color : colors) {
    if (*index++ != reference::Nearest(table_, color)) ++differences;
  }
  return differences;
}

}  // namespace nearest
