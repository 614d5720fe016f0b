// Scaling of 32-bit pixels for vectors of any width. Included like vector_modes.h.
#ifndef QDE_VECTOR_SCALING_H
#define QDE_VECTOR_SCALING_H

#include "host/QDE/rows/vector_modes.h"

namespace qde {

template <typename V>
inline constexpr std::size_t kVectorPixels = V::kBytes / sizeof(Pixel32);

template <typename V>
VectorOf<V> LoadPixels(const std::uint8_t* pixels, std::size_t position) {
  return V::Load(pixels + position * sizeof(Pixel32));
}
template <typename V>
void StorePixels(std::uint8_t* pixels, std::size_t position, VectorOf<V> vector) {
  V::Store(pixels + position * sizeof(Pixel32), vector);
}
template <typename V>
void CopyPixel(const std::uint8_t* source, std::size_t from, std::uint8_t* destination,
               std::size_t to) {
  std::memcpy(destination + to * sizeof(Pixel32), source + from * sizeof(Pixel32), sizeof(Pixel32));
}

// The distance in pixels to where stores do not cross cache lines: they cost twice
// as much there. The first vector and the last may overlap others.
template <typename V>
std::size_t PixelsToAligned(const std::uint8_t* pixels) {
  return BytesToAligned<V>(pixels) / sizeof(Pixel32);
}

// The last vector takes the odd pixels from one pixel earlier on, so that it
// does not read the pixel after the last one that is shown.
template <typename V>
void Halve(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  constexpr std::size_t kStep = kVectorPixels<V>;
  if (count <= kStep) {
    for (std::size_t i = 0; i < count; ++i) CopyPixel<V>(source, 2 * i, destination, i);
    return;
  }
  const auto halve = [&](std::size_t i) {
    const VectorOf<V> pixels = LoadPixels<V>(source, 2 * i);
    StorePixels<V>(destination, i, V::Even32(pixels, LoadPixels<V>(source, 2 * i + kStep)));
  };
  const std::size_t last = count - kStep;
  halve(0);
  for (std::size_t i = PixelsToAligned<V>(destination); i < last; i += kStep) halve(i);
  StorePixels<V>(
      destination, last,
      V::Odd32(LoadPixels<V>(source, 2 * last - 1), LoadPixels<V>(source, 2 * last - 1 + kStep)));
}

template <typename V>
void Twice(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  constexpr std::size_t kStep = kVectorPixels<V>;
  const std::size_t even = count / 2 * 2;
  if (even != count) CopyPixel<V>(source, even / 2, destination, even);
  if (even < 2 * kStep) {
    for (std::size_t i = 0; i < even; ++i) CopyPixel<V>(source, i / 2, destination, i);
    return;
  }
  const auto twice = [&](std::size_t i) {
    const VectorOf<V> pixels = LoadPixels<V>(source, i / 2);
    StorePixels<V>(destination, i, V::FirstTwice32(pixels));
    StorePixels<V>(destination, i + kStep, V::LastTwice32(pixels));
  };
  // Both of a pair begin at an even place.
  const std::size_t aligned = PixelsToAligned<V>(destination) / 2 * 2;
  const std::size_t last = even - 2 * kStep;
  twice(0);
  for (std::size_t i = aligned; i < last; i += 2 * kStep) twice(i);
  twice(last);
}

// For the levels that load from many places at a time.
template <typename V>
void Gather(const std::uint8_t* source, const std::uint32_t* positions, std::uint8_t* destination,
            std::size_t count) {
  constexpr std::size_t kStep = kVectorPixels<V>;
  if (count < kStep) {
    for (std::size_t i = 0; i < count; ++i) CopyPixel<V>(source, positions[i], destination, i);
    return;
  }
  const auto gather = [&](std::size_t i) {
    StorePixels<V>(destination, i, V::LoadEach32(source, V::Load(positions + i)));
  };
  const std::size_t last = count - kStep;
  for (std::size_t i = 0; i < last; i += kStep) gather(i);
  gather(last);
}

}  // namespace qde

#endif
