// Any pixels of a row, in vectors: included as vector_modes.h is,
// where the processor can load from many places at a time.
#ifndef QDE_VECTOR_GATHER_H
#define QDE_VECTOR_GATHER_H

#include "host/QDE/rows/vector_scaling.h"

inline void Gather(const std::uint8_t* source, const std::uint32_t* positions,
                   std::uint8_t* destination, std::size_t count) {
  if (count < kVectorPixels) {
    for (std::size_t i = 0; i < count; ++i) CopyPixel(source, positions[i], destination, i);
    return;
  }
  const auto gather = [&](std::size_t i) {
    const Vector places = Load(reinterpret_cast<const std::uint8_t*>(positions + i));
    StorePixels(destination, i, LoadEach32(source, places));
  };
  const std::size_t last = count - kVectorPixels;
  for (std::size_t i = 0; i < last; i += kVectorPixels) gather(i);
  gather(last);
}

#endif
