// Scaling of 32-bit pixels in vectors: included as vector_modes.h is.
#ifndef QDE_VECTOR_SCALING_H
#define QDE_VECTOR_SCALING_H

#include "host/QDE/rows/vector_modes.h"

inline constexpr std::size_t kVectorPixels = kVectorBytes / sizeof(Pixel32);

inline Vector LoadPixels(const std::uint8_t* pixels, std::size_t position) {
  return Load(pixels + position * sizeof(Pixel32));
}
inline void StorePixels(std::uint8_t* pixels, std::size_t position, Vector vector) {
  Store(pixels + position * sizeof(Pixel32), vector);
}
inline void CopyPixel(const std::uint8_t* source, std::size_t from, std::uint8_t* destination,
                      std::size_t to) {
  std::memcpy(destination + to * sizeof(Pixel32), source + from * sizeof(Pixel32), sizeof(Pixel32));
}

// Whole pixels to where stores do not cross the lines of the cache: they cost twice
// as much there. The first vector and the last may reach into others.
inline std::size_t PixelsToAligned(const std::uint8_t* pixels) {
  return BytesToAligned(pixels) / sizeof(Pixel32);
}

// The last vector takes the odd pixels from one pixel earlier on, so that it
// does not read the pixel after the last one that is shown.
inline void Halve(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  if (count <= kVectorPixels) {
    for (std::size_t i = 0; i < count; ++i) CopyPixel(source, 2 * i, destination, i);
    return;
  }
  const auto halve = [&](std::size_t i) {
    StorePixels(destination, i,
                EvenPixels(LoadPixels(source, 2 * i), LoadPixels(source, 2 * i + kVectorPixels)));
  };
  const std::size_t last = count - kVectorPixels;
  halve(0);
  for (std::size_t i = PixelsToAligned(destination); i < last; i += kVectorPixels) halve(i);
  StorePixels(destination, last,
              OddPixels(LoadPixels(source, 2 * last - 1),
                        LoadPixels(source, 2 * last - 1 + kVectorPixels)));
}

inline void Twice(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  const std::size_t even = count / 2 * 2;
  if (even != count) CopyPixel(source, even / 2, destination, even);
  if (even < 2 * kVectorPixels) {
    for (std::size_t i = 0; i < even; ++i) CopyPixel(source, i / 2, destination, i);
    return;
  }
  const auto twice = [&](std::size_t i) {
    const Vector pixels = LoadPixels(source, i / 2);
    StorePixels(destination, i, FirstPixelsTwice(pixels));
    StorePixels(destination, i + kVectorPixels, LastPixelsTwice(pixels));
  };
  // Both of a pair begin at an even place.
  const std::size_t aligned = PixelsToAligned(destination) / 2 * 2;
  const std::size_t last = even - 2 * kVectorPixels;
  twice(0);
  for (std::size_t i = aligned; i < last; i += 2 * kVectorPixels) twice(i);
  twice(last);
}

#endif
