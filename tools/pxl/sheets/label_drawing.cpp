// Code points of UTF-8, and letters blended into pictures.
#include "tools/pxl/sheets/label_drawing.h"

namespace pxl {
namespace {

void Blend(std::byte* channel, std::uint8_t colour, unsigned coverage) {
  const auto below = std::to_integer<unsigned>(*channel);
  *channel = static_cast<std::byte>((colour * coverage + below * (255U - coverage) + 127U) / 255U);
}

}  // namespace

char32_t TakeCodePoint(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  char32_t point = length == 1 ? first : first & (0xFFU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if (i >= text.size() || (byte(i) & 0xC0U) != 0x80U) {
      text.remove_prefix(1);
      return first;
    }
    point = point << 6 | (byte(i) & 0x3FU);
  }
  text.remove_prefix(length);
  return point;
}

void DrawCoverage(Picture& picture, const Coverage& shape, int left, int top, Colour colour) {
  for (int y = 0; y < shape.height; ++y) {
    if (top + y < 0 || top + y >= picture.header.height) continue;
    std::byte* row = picture.Rows().Row(top + y);
    for (int x = 0; x < shape.width; ++x) {
      if (left + x < 0 || left + x >= picture.header.width) continue;
      const unsigned coverage = shape.first[y * shape.rowBytes + x];
      std::byte* pixel = row + std::ptrdiff_t{4} * (left + x);
      Blend(pixel + 1, colour.red, coverage);
      Blend(pixel + 2, colour.green, coverage);
      Blend(pixel + 3, colour.blue, coverage);
    }
  }
}

}  // namespace pxl
