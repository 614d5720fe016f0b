// The standard colours of the drawing layer as a palette.
#include "tools/pxl/module/standard_colours.h"

#include <cstring>

#include "QDE_host.h"

namespace pxl {
namespace {

Palette ReadStandardColours() {
  const QDE_ColorTable& table = **QDE_StandardColors();
  Palette colours;
  for (int i = 0; i <= table.ctSize; ++i) {
    const QDE_RGBColor& rgb = table.ctTable[i].rgb;
    colours.push_back({static_cast<std::uint8_t>(rgb.red >> 8),
                       static_cast<std::uint8_t>(rgb.green >> 8),
                       static_cast<std::uint8_t>(rgb.blue >> 8)});
  }
  return colours;
}

}  // namespace

const Palette& StandardColours() {
  static const Palette colours = ReadStandardColours();
  return colours;
}

void LookUpColours(const std::byte* indices, std::byte* pixels, std::size_t width) {
  const Palette& colours = StandardColours();
  for (std::size_t x = 0; x < width; ++x) {
    const auto& rgb = colours[std::to_integer<std::size_t>(indices[x])];
    pixels[4 * x] = std::byte{0xFF};
    std::memcpy(&pixels[4 * x + 1], rgb.data(), rgb.size());
  }
}

}  // namespace pxl
