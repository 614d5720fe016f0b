#include "reference_copy.h"

#include <array>
#include <cstddef>

namespace reference {
namespace {

// The fourth byte, then the components.
using Pixel = std::array<int, 4>;

bool Contains(const Rect& rect, int x, int y) {
  return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

std::size_t Offset(const Picture& picture, int x, int y) {
  const int width = picture.bounds.right - picture.bounds.left;
  const int pixel = (y - picture.bounds.top) * width + (x - picture.bounds.left);
  return static_cast<std::size_t>(pixel) * static_cast<std::size_t>(picture.depth / 8);
}

// Where a component lies within a pixel.
std::size_t Place(const Picture& picture, std::size_t component) {
  return picture.format == 0 ? component : 3 - component;
}

int StandardComponent(int index, int component) {
  const QDE_RGBColor& rgb = (*QDE_StandardColors())->ctTable[index].rgb;
  const int components[] = {rgb.red, rgb.green, rgb.blue};
  return components[component] / 256;
}

Pixel Read(const Picture& picture, int x, int y) {
  const std::size_t offset = Offset(picture, x, y);
  if (picture.depth == 8) {
    const int index = picture.bytes[offset];
    return {0, StandardComponent(index, 0), StandardComponent(index, 1),
            StandardComponent(index, 2)};
  }
  Pixel pixel{};
  for (std::size_t i = 0; i < 4; ++i) pixel[i] = picture.bytes[offset + Place(picture, i)];
  return pixel;
}

void Write(Picture* picture, int x, int y, const Pixel& pixel) {
  const std::size_t offset = Offset(*picture, x, y);
  if (picture->depth == 8) {
    picture->bytes[offset] =
        static_cast<std::uint8_t>(NearestStandard(pixel[1], pixel[2], pixel[3]));
    return;
  }
  for (std::size_t i = 0; i < 4; ++i) {
    picture->bytes[offset + Place(*picture, i)] = static_cast<std::uint8_t>(pixel[i]);
  }
}

int SourceOf(int position, int start, int end, int destinationStart, int destinationEnd) {
  return start +
         (position - destinationStart) * (end - start) / (destinationEnd - destinationStart);
}

}  // namespace

int NearestStandard(int red, int green, int blue) {
  int nearest = 0;
  int smallest = 3 * 256 * 256;
  for (int index = 0; index < 256; ++index) {
    const int r = StandardComponent(index, 0) - red;
    const int g = StandardComponent(index, 1) - green;
    const int b = StandardComponent(index, 2) - blue;
    if (r * r + g * g + b * b < smallest) {
      smallest = r * r + g * g + b * b;
      nearest = index;
    }
  }
  return nearest;
}

Picture Copy(const Picture& source, const Picture& destination, const Rect& from, const Rect& to) {
  Picture result = destination;
  if (from.left >= from.right || from.top >= from.bottom) return result;
  for (int y = to.top; y < to.bottom; ++y) {
    for (int x = to.left; x < to.right; ++x) {
      const int sx = SourceOf(x, from.left, from.right, to.left, to.right);
      const int sy = SourceOf(y, from.top, from.bottom, to.top, to.bottom);
      if (!Contains(result.bounds, x, y) || !Contains(source.bounds, sx, sy)) continue;
      Write(&result, x, y, Read(source, sx, sy));
    }
  }
  return result;
}

}  // namespace reference
