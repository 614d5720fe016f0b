// Indices and colours in vectors: included as vector_modes.h is, where the
// processor can load from many places at a time.
#ifndef QDE_VECTOR_COLORS_H
#define QDE_VECTOR_COLORS_H

#include "vector_scaling.h"

// The place of each pixel's colour. Bytes are multiplied in pairs, and then the
// pairs' sums; the factors follow the order of the bytes.
class Places {
 public:
  explicit Places(Format format) {
    const bool reversed = format == kBGRA;
    components_ = Spread32(reversed ? 0x00FFFFFF : 0xFFFFFF00);
    inCell_ = Spread32(reversed ? 0x00070707 : 0x07070700);
    cellBytes_ = Spread32(reversed ? 0x00402001 : 0x01204000);
    cellPairs_ = Spread32(reversed ? 0x04000040 : 0x00400400);
    bytesInCell_ = Spread32(reversed ? 0x00400801 : 0x01084000);
  }

  [[nodiscard]] Vector Of(Vector pixels) const {
    const Vector low = And(pixels, inCell_);
    const Vector high = And(Xor(pixels, low), components_);
    const Vector cells = MultiplyPairs16(MultiplyPairs8(high, cellBytes_), cellPairs_);
    const Vector inCells = MultiplyPairs16(MultiplyPairs8(low, bytesInCell_), Spread32(0x00010001));
    return Xor(cells, inCells);
  }

 private:
  Vector components_;
  Vector inCell_;
  Vector cellBytes_;
  Vector cellPairs_;
  Vector bytesInCell_;
};

// Four vectors of pixels give one of indices.
inline std::size_t Find(const NearestTable& table, Format format, const std::uint8_t* pixels,
                        std::uint8_t* indices, std::size_t count) {
  const Places places(format);
  const Vector mask = Spread32(table.mask * 0x01010101U);
  const auto look = [&](std::size_t i) {
    return LoadEach8(table.bytes, places.Of(LoadPixels(pixels, i)));
  };
  std::size_t i = 0;
  for (; i + kVectorBytes <= count; i += kVectorBytes) {
    const Vector found = PackWords(look(i), look(i + kVectorPixels), look(i + 2 * kVectorPixels),
                                   look(i + 3 * kVectorPixels));
    if (HasZeroByte(found)) return i;
    Store(indices + i, Xor(found, mask));
  }
  return i;
}

inline void Show(const std::uint8_t* table, const std::uint8_t* indices, std::uint8_t* pixels,
                 std::size_t count) {
  std::size_t i = 0;
  for (; i + kVectorPixels <= count; i += kVectorPixels) {
    StorePixels(pixels, i, LoadEach32(table, LoadWords(indices + i)));
  }
  for (; i < count; ++i) CopyPixel(table, indices[i], pixels, i);
}

#endif
