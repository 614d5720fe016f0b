// Indices and colours for vectors of any width, at the levels that load from many
// places at a time. Included like vector_modes.h.
#ifndef QDE_VECTOR_COLORS_H
#define QDE_VECTOR_COLORS_H

#include "host/QDE/rows/row_colors.h"
#include "host/QDE/rows/vector_scaling.h"

namespace qde {

// The place of each pixel's colour. Bytes are multiplied in pairs and added, then
// the sums likewise; the factors follow the order of the bytes.
template <typename V>
class Places {
 public:
  explicit Places(Format format) {
    const bool reversed = format == kBGRA;
    upper_ = V::Spread32(reversed ? 0x00F0F0F0 : 0xF0F0F000);
    middle_ = V::Spread32(reversed ? 0x000C0C0C : 0x0C0C0C00);
    lower_ = V::Spread32(reversed ? 0x00030303 : 0x03030300);
    upperBytes_ = V::Spread32(reversed ? 0x00401001 : 0x01104000);
    middleBytes_ = V::Spread32(reversed ? 0x00404010 : 0x10404000);
    lowerBytes_ = V::Spread32(reversed ? 0x00040401 : 0x01040400);
    upperPairs_ = V::Spread32(reversed ? 0x04000100 : 0x01000400);
    otherPairs_ = V::Spread32(reversed ? 0x00040001 : 0x00010004);
  }

  [[nodiscard]] VectorOf<V> Of(VectorOf<V> pixels) const {
    const VectorOf<V> upper = V::MultiplyPairs8(V::And(pixels, upper_), upperBytes_);
    const VectorOf<V> middle = V::MultiplyPairs8(V::And(pixels, middle_), middleBytes_);
    const VectorOf<V> lower = V::MultiplyPairs8(V::And(pixels, lower_), lowerBytes_);
    return V::Xor(V::MultiplyPairs16(upper, upperPairs_),
                  V::MultiplyPairs16(V::Xor(middle, lower), otherPairs_));
  }

 private:
  VectorOf<V> upper_;
  VectorOf<V> middle_;
  VectorOf<V> lower_;
  VectorOf<V> upperBytes_;
  VectorOf<V> middleBytes_;
  VectorOf<V> lowerBytes_;
  VectorOf<V> upperPairs_;
  VectorOf<V> otherPairs_;
};

// Four vectors of pixels become one of indices.
template <typename V>
inline void FindVector(const NearestTable& table, const Places<V>& places,
                       const std::uint8_t* pixels, std::uint8_t* indices) {
  const auto look = [&](std::size_t i) {
    return V::LoadEach8(table.bytes, places.Of(LoadPixels<V>(pixels, i * kVectorPixels<V>)));
  };
  const VectorOf<V> found = V::PackUnsignedInOrder(look(0), look(1), look(2), look(3));
  V::Store(indices, V::Xor(found, V::Spread32(table.mask * 0x01010101U)));
}

template <typename V>
void Find(const NearestTable& table, Format format, const std::uint8_t* pixels,
          std::uint8_t* indices, std::size_t count) {
  const Places<V> places(format);
  if (count < V::kBytes) {
    std::uint8_t somePixels[V::kBytes * sizeof(Pixel32)] = {};
    std::uint8_t someIndices[V::kBytes];
    std::memcpy(somePixels, pixels, count * sizeof(Pixel32));
    FindVector<V>(table, places, somePixels, someIndices);
    std::memcpy(indices, someIndices, count);
    return;
  }
  const std::size_t last = count - V::kBytes;
  for (std::size_t i = 0; i < last; i += V::kBytes) {
    FindVector<V>(table, places, pixels + i * sizeof(Pixel32), indices + i);
  }
  FindVector<V>(table, places, pixels + last * sizeof(Pixel32), indices + last);
}

template <typename V>
void Show(const std::uint8_t* table, const std::uint8_t* indices, std::uint8_t* pixels,
          std::size_t count) {
  std::size_t i = 0;
  for (; i + kVectorPixels<V> <= count; i += kVectorPixels<V>) {
    StorePixels<V>(pixels, i, V::LoadEach32(table, V::LoadBytesAs32(indices + i)));
  }
  for (; i < count; ++i) CopyPixel<V>(table, indices[i], pixels, i);
}

}  // namespace qde

#endif
