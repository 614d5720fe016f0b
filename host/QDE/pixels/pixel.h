// 32-bit pixels by their bytes in memory.
#ifndef QDE_PIXEL_H
#define QDE_PIXEL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/image.h"

namespace qde {

using Pixel32 = std::array<std::uint8_t, 4>;

// `fourth` is the byte that belongs to no component.
constexpr Pixel32 ToPixel(Color color, Format format, std::uint8_t fourth = 0) {
  if (format == kBGRA) return {color.blue, color.green, color.red, fourth};
  return {fourth, color.red, color.green, color.blue};
}

constexpr Color ToColor(const Pixel32& pixel, Format format) {
  if (format == kBGRA) return {pixel[2], pixel[1], pixel[0]};
  return {pixel[1], pixel[2], pixel[3]};
}

inline Color ColorAt(const std::uint8_t* pixels, std::size_t position, Format format) {
  Pixel32 pixel{};
  std::memcpy(pixel.data(), pixels + position * sizeof pixel, sizeof pixel);
  return ToColor(pixel, format);
}

// Pixels of a row, none of them aligned. Word is std::uint32_t for 32 bits and
// std::uint8_t for 8.
template <typename Word>
Word Load(const std::uint8_t* pixels, std::size_t position) {
  Word word = 0;
  std::memcpy(&word, pixels + position * sizeof word, sizeof word);
  return word;
}
template <typename Word>
void Store(std::uint8_t* pixels, std::size_t position, Word word) {
  std::memcpy(pixels + position * sizeof word, &word, sizeof word);
}

}  // namespace qde

#endif
