// Scaling of 32-bit pixels in vectors: included as vector_modes.h is.
#ifndef QDE_VECTOR_SCALING_H
#define QDE_VECTOR_SCALING_H

constexpr std::size_t kVectorPixels = kVectorBytes / sizeof(Pixel32);

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

// The last vector takes the odd pixels from one pixel earlier on, so that it
// does not read the pixel after the last one that is shown.
inline void Halve(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  if (count <= kVectorPixels) {
    for (std::size_t i = 0; i < count; ++i) CopyPixel(source, 2 * i, destination, i);
    return;
  }
  const std::size_t last = count - kVectorPixels;
  for (std::size_t i = 0; i < last; i += kVectorPixels) {
    StorePixels(destination, i,
                EvenPixels(LoadPixels(source, 2 * i), LoadPixels(source, 2 * i + kVectorPixels)));
  }
  StorePixels(destination, last,
              OddPixels(LoadPixels(source, 2 * last - 1),
                        LoadPixels(source, 2 * last - 1 + kVectorPixels)));
}

inline void Twice(const std::uint8_t* source, std::uint8_t* destination, std::size_t count) {
  std::size_t i = 0;
  for (; i + 2 * kVectorPixels <= count; i += 2 * kVectorPixels) {
    const Vector pixels = LoadPixels(source, i / 2);
    StorePixels(destination, i, FirstPixelsTwice(pixels));
    StorePixels(destination, i + kVectorPixels, LastPixelsTwice(pixels));
  }
  for (; i < count; ++i) CopyPixel(source, i / 2, destination, i);
}

#endif
