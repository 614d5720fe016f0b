// Copies pixel by pixel, with the formulas of the modes.
#include "tests/support/drawing/reference_copy.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <utility>

namespace reference {
namespace {

struct Pixel {
  int fourth;
  Rgb color;
  int index;  // at 8 bits
};

const Rgb kBlack = {0, 0, 0};
const Rgb kWhite = {255, 255, 255};

bool Contains(const Rect& rect, int x, int y) {
  return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
}

std::size_t Offset(const Picture& picture, int x, int y) {
  const int width = picture.bounds.right - picture.bounds.left;
  const int pixel = (y - picture.bounds.top) * width + (x - picture.bounds.left);
  return static_cast<std::size_t>(pixel) * static_cast<std::size_t>(picture.depth / 8);
}

Rgb Narrowed(const QDE_RGBColor& color) {
  return {color.red / 256, color.green / 256, color.blue / 256};
}

Rgb ColorAt(const Table& table, int index) {
  return table.colors[static_cast<std::size_t>(index)].value_or(kBlack);
}

Pixel Read(const Picture& picture, int x, int y) {
  const std::uint8_t* bytes = picture.bytes.data() + Offset(picture, x, y);
  if (picture.depth == 8) return {0, ColorAt(picture.table, bytes[0]), bytes[0]};
  if (picture.format == 0) return {bytes[0], {bytes[1], bytes[2], bytes[3]}, 0};
  return {bytes[3], {bytes[2], bytes[1], bytes[0]}, 0};
}

void Write(Picture* picture, int x, int y, const Pixel& pixel) {
  std::uint8_t* bytes = picture->bytes.data() + Offset(*picture, x, y);
  if (picture->depth == 8) {
    bytes[0] = static_cast<std::uint8_t>(pixel.index);
    return;
  }
  const int ordered[] = {pixel.fourth, pixel.color[0], pixel.color[1], pixel.color[2]};
  for (int i = 0; i < 4; ++i) {
    bytes[picture->format == 0 ? i : 3 - i] = static_cast<std::uint8_t>(ordered[i]);
  }
}

int SourceOf(int position, int start, int end, int destinationStart, int destinationEnd) {
  const std::int64_t product = std::int64_t{position - destinationStart} * (end - start);
  return start + static_cast<int>(product / (destinationEnd - destinationStart));
}

// ---- Modes

// The operands of one component.
struct Values {
  int source;
  int old;
  int fore;
  int back;
  int op;  // of 16 bits
};
using Formula = std::function<int(const Values&)>;

// Each bit of the source selects the bit of one of two values.
int BitByBit(int source, int whenClear, int whenSet) {
  int result = 0;
  for (int bit = 1; bit < 256; bit *= 2) {
    if (((source & bit) != 0 ? whenSet & bit : whenClear & bit) != 0) result += bit;
  }
  return result;
}

// Between two values, at source / 255 of the way, to the nearest.
int Between(int source, int first, int second) {
  return (2 * (first * (255 - source) + second * source) + 255) / (2 * 255);
}

std::int64_t Blended(const Values& v) {
  return (std::int64_t{v.source} * v.op + std::int64_t{v.old} * (65535 - v.op)) / 65535;
}

const std::map<int, Formula> kFormulas = {
    {0, [](const Values& v) { return Between(v.source, v.fore, v.back); }},
    {1, [](const Values& v) { return BitByBit(v.source, v.fore, v.old); }},
    {2, [](const Values& v) { return 255 - (v.source ^ v.old); }},
    {3, [](const Values& v) { return BitByBit(v.source, v.back, v.old); }},
    {4, [](const Values& v) { return Between(v.source, v.back, v.fore); }},
    {5, [](const Values& v) { return BitByBit(v.source, v.old, v.fore); }},
    {6, [](const Values& v) { return v.source ^ v.old; }},
    {7, [](const Values& v) { return BitByBit(v.source, v.old, v.back); }},
    {32, [](const Values& v) { return static_cast<int>(Blended(v)); }},
    {33, [](const Values& v) { return std::min(v.source + v.old, v.op / 256); }},
    {34, [](const Values& v) { return (v.source + v.old) % 256; }},
    {35, [](const Values& v) { return std::max(v.old - v.source, v.op / 256); }},
    {37, [](const Values& v) { return std::max(v.source, v.old); }},
    {38, [](const Values& v) { return (v.old - v.source + 256) % 256; }},
    {39, [](const Values& v) { return std::min(v.source, v.old); }},
};

// For indices, where a set bit is black.
const std::map<int, std::function<int(int, int)>> kIndexFormulas = {
    {0, [](int s, int) { return s; }},        {1, [](int s, int d) { return s | d; }},
    {2, [](int s, int d) { return s ^ d; }},  {3, [](int s, int d) { return d & ~s; }},
    {4, [](int s, int) { return ~s; }},       {5, [](int s, int d) { return d | ~s; }},
    {6, [](int s, int d) { return d ^ ~s; }}, {7, [](int s, int d) { return d & s; }},
};

int Wide(const QDE_RGBColor& color, std::size_t component) {
  const int components[] = {color.red, color.green, color.blue};
  return components[component];
}

// A copy whose modes and colours are known.
class Copier {
 public:
  Copier(const Picture& source, Picture* destination, int mode, const Colors& colors)
      : source_(source),
        destination_(*destination),
        mode_(mode % 64),
        dithers_(mode >= 64 && destination->depth == 8),
        colors_(colors) {}

  void CopyPixel(int sx, int sy, int x, int y) {
    const Pixel source = Read(source_, sx, sy);
    Pixel pixel = Read(destination_, x, y);
    if (WorksOnIndices()) {
      pixel.index = CombineIndices(source, pixel);
    } else {
      const Rgb color = Combine(source, pixel);
      if (destination_.depth == 8) pixel.index = IndexOf(color, pixel, x, y);
      if (mode_ == 0) pixel.fourth = source.fourth;
      pixel.color = color;
    }
    Write(&destination_, x, y, pixel);
  }

 private:
  [[nodiscard]] Rgb Fore() const { return Narrowed(colors_[QDE_PortColor_FORE]); }
  [[nodiscard]] Rgb Back() const { return Narrowed(colors_[QDE_PortColor_BACK]); }

  [[nodiscard]] bool WorksOnIndices() const {
    if (source_.depth != 8 || destination_.depth != 8) return false;
    const bool same = source_.table.seed == destination_.table.seed ||
                      source_.table.colors == destination_.table.colors;
    const bool plain = Fore() == kBlack && Back() == kWhite;
    return same && (mode_ == 2 || mode_ == 6 || mode_ == 36 || (mode_ < 8 && plain));
  }

  [[nodiscard]] int CombineIndices(const Pixel& source, const Pixel& old) const {
    if (mode_ == 36) return source.color == Back() ? old.index : source.index;
    return kIndexFormulas.at(mode_)(source.index, old.index) & 255;
  }

  [[nodiscard]] Rgb Combine(const Pixel& source, const Pixel& old) const {
    if (mode_ == 36) return source.color == Back() ? old.color : source.color;
    if (mode_ == 50) return source.color == kWhite ? old.color : Swapped(old.color);
    Rgb result{};
    for (std::size_t k = 0; k < 3; ++k) {
      result[k] = kFormulas.at(mode_)({source.color[k], old.color[k], Fore()[k], Back()[k],
                                       Wide(colors_[QDE_PortColor_OP], k)});
    }
    return result;
  }

  [[nodiscard]] Rgb Shown(const Rgb& color) const {
    if (destination_.depth == 32) return color;
    return ColorAt(destination_.table, Nearest(destination_.table, color));
  }

  [[nodiscard]] Rgb Swapped(const Rgb& color) const {
    const Rgb ground = Shown(Back());
    const Rgb hilite = Shown(Narrowed(colors_[QDE_PortColor_HILITE]));
    if (color == ground) return hilite;
    return color == hilite ? ground : color;
  }

  int IndexOf(const Rgb& color, const Pixel& old, int x, int y) {
    const bool isOld = mode_ != 0 && mode_ != 4 && color == old.color;
    const int nearest = isOld ? old.index : Nearest(destination_.table, color);
    if (!dithers_) return nearest;
    Rgb due{};
    for (std::size_t k = 0; k < 3; ++k) due[k] = RoundedSixteenths(due_[{x, y}][k]);
    if (ColorAt(destination_.table, nearest) == color) {
      Spread(x, y, due);
      return nearest;
    }
    Rgb wanted{};
    for (std::size_t k = 0; k < 3; ++k) wanted[k] = std::clamp(color[k] + due[k], 0, 255);
    const int index = Nearest(destination_.table, wanted);
    const Rgb got = ColorAt(destination_.table, index);
    Spread(x, y, {wanted[0] - got[0], wanted[1] - got[1], wanted[2] - got[2]});
    return index;
  }

  // To the nearest whole, halves upward, also below zero.
  static int RoundedSixteenths(int sum) {
    const int moved = sum + 8 + 16 * 10000;
    return moved / 16 - 10000;
  }

  void Spread(int x, int y, const Rgb& miss) {
    for (std::size_t k = 0; k < 3; ++k) {
      due_[{x + 1, y}][k] += 7 * miss[k];
      due_[{x - 1, y + 1}][k] += 3 * miss[k];
      due_[{x, y + 1}][k] += 5 * miss[k];
      due_[{x + 1, y + 1}][k] += 1 * miss[k];
    }
  }

  const Picture& source_;
  Picture& destination_;
  int mode_;
  bool dithers_;
  const Colors& colors_;
  std::map<std::pair<int, int>, Rgb> due_;  // sixteenths, by place
};

}  // namespace

Table TableOf(const QDE_ColorTable& table) {
  Table result{table.ctSeed, {}};
  for (int place = 0; place <= table.ctSize; ++place) {
    const int index = table.ctFlags < 0 ? place : table.ctTable[place].value;
    if (index < 0 || index > 255) continue;
    result.colors[static_cast<std::size_t>(index)] = Narrowed(table.ctTable[place].rgb);
  }
  return result;
}

int Nearest(const Table& table, const Rgb& color) {
  int nearest = 0;
  int smallest = 4 * 256 * 256;
  for (int index = 0; index < 256; ++index) {
    const auto& other = table.colors[static_cast<std::size_t>(index)];
    if (!other) continue;
    const int red = (*other)[0] - color[0];
    const int green = (*other)[1] - color[1];
    const int blue = (*other)[2] - color[2];
    const int distance = red * red + green * green + blue * blue;
    if (distance < smallest) {
      smallest = distance;
      nearest = index;
    }
  }
  return nearest;
}

Picture Copy(const Picture& source, const Picture& destination, const Rect& from, const Rect& to,
             int mode, const Colors& colors) {
  Picture result = destination;
  if (from.left >= from.right || from.top >= from.bottom) return result;
  Copier copier(source, &result, mode, colors);
  const Rect& bounds = result.bounds;
  for (int y = std::max(to.top, bounds.top); y < std::min(to.bottom, bounds.bottom); ++y) {
    for (int x = std::max(to.left, bounds.left); x < std::min(to.right, bounds.right); ++x) {
      const int sx = SourceOf(x, from.left, from.right, to.left, to.right);
      const int sy = SourceOf(y, from.top, from.bottom, to.top, to.bottom);
      if (!Contains(source.bounds, sx, sy)) continue;
      copier.CopyPixel(sx, sy, x, y);
    }
  }
  return result;
}

}  // namespace reference
