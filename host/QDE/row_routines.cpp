#include "row_routines.h"

#include <algorithm>
#include <cstring>

#include "simd/pixels32.h"

namespace qde {
namespace {

using Pixel32 = std::array<std::uint8_t, 4>;

// The fourth byte is no component of an index's colour: 0.
Pixel32 ToPixel(Color color, Format format) {
  if (format == kBGRA) return {color.blue, color.green, color.red, 0};
  return {0, color.red, color.green, color.blue};
}

Color ToColor(const Pixel32& pixel, Format format) {
  if (format == kBGRA) return {pixel[2], pixel[1], pixel[0]};
  return {pixel[1], pixel[2], pixel[3]};
}

bool IsSameTable(const Image& source, const Image& destination) {
  return source.colors == destination.colors ||
         source.colors->ctSeed == destination.colors->ctSeed ||
         Palette(*source.colors) == Palette(*destination.colors);
}

void Copy8To8(const RowContext& context, const std::uint8_t* source, std::uint8_t* destination,
              std::size_t count) {
  if (context.sameTable) {
    std::memcpy(destination, source, count);
    return;
  }
  std::transform(source, source + count, destination,
                 [&context](std::uint8_t index) { return context.indices[index]; });
}

void Copy8To32(const RowContext& context, const std::uint8_t* source, std::uint8_t* destination,
               std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    std::memcpy(destination + 4 * i, context.pixels[source[i]].data(), sizeof(Pixel32));
  }
}

// Neighbours are often alike, and the search is long.
void Copy32To8(const RowContext& context, const std::uint8_t* source, std::uint8_t* destination,
               std::size_t count) {
  Color last{};
  std::uint8_t index = context.target->Nearest(last);
  for (std::size_t i = 0; i < count; ++i) {
    Pixel32 pixel{};
    std::memcpy(pixel.data(), source + 4 * i, sizeof pixel);
    const Color color = ToColor(pixel, context.sourceFormat);
    if (color != last) index = context.target->Nearest(color);
    last = color;
    destination[i] = index;
  }
}

void Copy32To32(const RowContext& context, const std::uint8_t* source, std::uint8_t* destination,
                std::size_t count) {
  std::memcpy(destination, source, 4 * count);
  if (context.sourceFormat != context.destinationFormat) simd::ReverseBytes32(destination, count);
}

// A mode's routines, by source and destination depth.
struct Mode {
  std::int16_t number;
  RowRoutine from8[2];
  RowRoutine from32[2];
};

constexpr Mode kModes[] = {
    // srcCopy
    {0, {Copy8To8, Copy8To32}, {Copy32To8, Copy32To32}},
};

}  // namespace

RowContext::RowContext(const Image& source, const Image& destination)
    : sourceFormat(source.format), destinationFormat(destination.format) {
  const bool to8 = destination.layout.depth == 8;
  if (to8) target.emplace(*destination.colors);
  if (source.layout.depth != 8) return;
  sameTable = to8 && IsSameTable(source, destination);
  if (sameTable) return;
  const Palette palette(*source.colors);
  for (std::size_t i = 0; i < 256; ++i) {
    const Color color = palette[static_cast<std::uint8_t>(i)];
    pixels[i] = ToPixel(color, destination.format);
    if (to8) indices[i] = target->Nearest(color);
  }
}

RowRoutine FindRowRoutine(std::int16_t mode, std::int16_t sourceDepth,
                          std::int16_t destinationDepth) {
  const auto* const found = std::find_if(std::begin(kModes), std::end(kModes),
                                         [mode](const Mode& m) { return m.number == mode; });
  if (found == std::end(kModes)) return nullptr;
  const RowRoutine* routines = sourceDepth == 8 ? found->from8 : found->from32;
  return routines[destinationDepth == 8 ? 0 : 1];
}

}  // namespace qde
