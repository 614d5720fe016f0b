// Indices and colours in vectors: included as vector_modes.h is, where the
// processor can load from many places at a time.
#ifndef QDE_VECTOR_COLORS_H
#define QDE_VECTOR_COLORS_H

#include "host/QDE/rows/vector_scaling.h"

// The place of each pixel's colour. Bytes are multiplied in pairs and added, then
// the sums likewise; the factors follow the order of the bytes.
class Places {
 public:
  explicit Places(Format format) {
    const bool reversed = format == kBGRA;
    upper_ = Spread32(reversed ? 0x00F0F0F0 : 0xF0F0F000);
    middle_ = Spread32(reversed ? 0x000C0C0C : 0x0C0C0C00);
    lower_ = Spread32(reversed ? 0x00030303 : 0x03030300);
    upperBytes_ = Spread32(reversed ? 0x00401001 : 0x01104000);
    middleBytes_ = Spread32(reversed ? 0x00404010 : 0x10404000);
    lowerBytes_ = Spread32(reversed ? 0x00040401 : 0x01040400);
    upperPairs_ = Spread32(reversed ? 0x04000100 : 0x01000400);
    otherPairs_ = Spread32(reversed ? 0x00040001 : 0x00010004);
  }

  [[nodiscard]] Vector Of(Vector pixels) const {
    const Vector upper = MultiplyPairs8(And(pixels, upper_), upperBytes_);
    const Vector middle = MultiplyPairs8(And(pixels, middle_), middleBytes_);
    const Vector lower = MultiplyPairs8(And(pixels, lower_), lowerBytes_);
    return Xor(MultiplyPairs16(upper, upperPairs_),
               MultiplyPairs16(Xor(middle, lower), otherPairs_));
  }

 private:
  Vector upper_;
  Vector middle_;
  Vector lower_;
  Vector upperBytes_;
  Vector middleBytes_;
  Vector lowerBytes_;
  Vector upperPairs_;
  Vector otherPairs_;
};

// Four vectors of pixels give one of indices.
inline void FindVector(const NearestTable& table, const Places& places, const std::uint8_t* pixels,
                       std::uint8_t* indices) {
  const auto look = [&](std::size_t i) {
    return LoadEach8(table.bytes, places.Of(LoadPixels(pixels, i * kVectorPixels)));
  };
  const Vector found = PackWords(look(0), look(1), look(2), look(3));
  Store(indices, Xor(found, Spread32(table.mask * 0x01010101U)));
}

inline void Find(const NearestTable& table, Format format, const std::uint8_t* pixels,
                 std::uint8_t* indices, std::size_t count) {
  const Places places(format);
  if (count < kVectorBytes) {
    std::uint8_t somePixels[kVectorBytes * sizeof(Pixel32)] = {};
    std::uint8_t someIndices[kVectorBytes];
    std::memcpy(somePixels, pixels, count * sizeof(Pixel32));
    FindVector(table, places, somePixels, someIndices);
    std::memcpy(indices, someIndices, count);
    return;
  }
  const std::size_t last = count - kVectorBytes;
  for (std::size_t i = 0; i < last; i += kVectorBytes) {
    FindVector(table, places, pixels + i * sizeof(Pixel32), indices + i);
  }
  FindVector(table, places, pixels + last * sizeof(Pixel32), indices + last);
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
