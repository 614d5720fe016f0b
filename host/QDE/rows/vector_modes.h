// The transfer modes of 32-bit pixels for vectors of any width. Only for the files of
// one level: see the headers of the vectors in simd/. Inline functions that depend on
// no vector type are not used here, since the levels would share them.
#ifndef QDE_VECTOR_MODES_H
#define QDE_VECTOR_MODES_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "host/QDE/rows/row_routines.h"

namespace qde {

template <typename V>
using VectorOf = typename V::Type;

// ---- The loop

// For fewer pixels than a vector has.
template <typename V, typename Combine>
void CombineFew(const Combine& combine, const std::uint8_t* source, std::uint8_t* destination,
                std::size_t bytes) {
  std::uint8_t from[V::kBytes] = {};
  std::uint8_t to[V::kBytes] = {};
  std::memcpy(from, source, bytes);
  std::memcpy(to, destination, bytes);
  V::Store(to, combine(V::Load(from), V::Load(to)));
  std::memcpy(destination, to, bytes);
}

// The distance in whole pixels, at most a vector, to where a vector does not cross
// cache lines, provided that the pixels themselves do not.
template <typename V>
std::size_t BytesToAligned(const std::uint8_t* pixels) {
  const std::size_t beyond = reinterpret_cast<std::uintptr_t>(pixels) % V::kBytes;
  return (V::kBytes - beyond) / sizeof(Pixel32) * sizeof(Pixel32);
}

// The first and the last vector may overlap others. They are computed before
// anything is stored, and stored after all others.
template <typename V, typename Combine>
void CombinePixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                   std::size_t count) {
  const Combine combine(operands);
  const std::size_t bytes = count * sizeof(Pixel32);
  if (bytes < V::kBytes) {
    CombineFew<V>(combine, source, destination, bytes);
    return;
  }
  const auto combined = [&](std::size_t at) {
    return combine(V::Load(source + at), V::Load(destination + at));
  };
  const std::size_t last = bytes - V::kBytes;
  const VectorOf<V> head = combined(0);
  const VectorOf<V> tail = combined(last);
  for (std::size_t at = BytesToAligned<V>(destination); at < last; at += V::kBytes) {
    V::Store(destination + at, combined(at));
  }
  V::Store(destination, head);
  V::Store(destination + last, tail);
}

// ---- Modes of bits and components

// Four bytes, or eight, repeated throughout a vector.
template <typename V>
VectorOf<V> SpreadPixel(const Pixel32& pixel) {
  std::uint32_t word = 0;
  std::memcpy(&word, &pixel, sizeof word);
  return V::Spread32(word);
}
template <typename V>
VectorOf<V> SpreadEight(const void* numbers) {
  std::uint64_t word = 0;
  std::memcpy(&word, numbers, sizeof word);
  return V::Spread64(word);
}

// The operands that are pixels, each repeated throughout a vector.
template <typename V>
struct Colors {
  explicit Colors(const Operands& operands)
      : components(SpreadPixel<V>(operands.components)),
        fore(SpreadPixel<V>(operands.fore)),
        back(SpreadPixel<V>(operands.back)),
        hilite(SpreadPixel<V>(operands.hilite)),
        ground(SpreadPixel<V>(operands.ground)),
        ceiling(SpreadPixel<V>(operands.ceiling)),
        floor(SpreadPixel<V>(operands.floor)) {}

  VectorOf<V> components;
  VectorOf<V> fore;
  VectorOf<V> back;
  VectorOf<V> hilite;
  VectorOf<V> ground;
  VectorOf<V> ceiling;
  VectorOf<V> floor;
};

// Combines by a function of the colours, of the source's pixels and of those of the
// destination.
template <typename V, auto kFunction>
struct ByColors {
  explicit ByColors(const Operands& operands) : colors(operands) {}
  VectorOf<V> operator()(VectorOf<V> pixels, VectorOf<V> old) const {
    return kFunction(colors, pixels, old);
  }
  Colors<V> colors;
};

// In the boolean modes the bits of a pixel choose between two values. Only the
// components change.
template <typename V>
VectorOf<V> Choose(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> black,
                   VectorOf<V> white, VectorOf<V> old) {
  return V::Select(colors.components, V::Select(pixels, white, black), old);
}
template <typename V>
VectorOf<V> Or(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, colors.fore, old, old);
}
template <typename V>
VectorOf<V> Xor(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, V::Not(old), old, old);
}
template <typename V>
VectorOf<V> Bic(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, colors.back, old, old);
}
template <typename V>
VectorOf<V> NotCopy(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, colors.back, colors.fore, old);
}
template <typename V>
VectorOf<V> NotOr(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, old, colors.fore, old);
}
template <typename V>
VectorOf<V> NotXor(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, old, V::Not(old), old);
}
template <typename V>
VectorOf<V> NotBic(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return Choose<V>(colors, pixels, old, colors.back, old);
}

template <typename V>
VectorOf<V> AddPin(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Min8(V::AddSaturated8(old, V::And(pixels, colors.components)), colors.ceiling);
}
template <typename V>
VectorOf<V> AddOver(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Add8(old, V::And(pixels, colors.components));
}
template <typename V>
VectorOf<V> SubPin(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Max8(V::SubSaturated8(old, V::And(pixels, colors.components)), colors.floor);
}
template <typename V>
VectorOf<V> SubOver(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Sub8(old, V::And(pixels, colors.components));
}
template <typename V>
VectorOf<V> Maximum(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Max8(V::And(pixels, colors.components), old);
}
template <typename V>
VectorOf<V> Minimum(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  return V::Min8(V::Or(pixels, V::Not(colors.components)), old);
}

template <typename V>
VectorOf<V> Transparent(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  const VectorOf<V> difference = V::And(V::Xor(pixels, colors.back), colors.components);
  const VectorOf<V> hidden = V::Equal32(difference, V::Spread32(0));
  return V::Select(hidden, old, V::Select(colors.components, pixels, old));
}
template <typename V>
VectorOf<V> Hilite(const Colors<V>& colors, VectorOf<V> pixels, VectorOf<V> old) {
  const VectorOf<V> components = colors.components;
  const VectorOf<V> color = V::And(old, components);
  const VectorOf<V> other = V::Select(V::Equal32(color, colors.hilite), colors.ground, color);
  const VectorOf<V> swapped = V::Select(V::Equal32(color, colors.ground), colors.hilite, other);
  const VectorOf<V> white = V::Equal32(V::And(pixels, components), components);
  return V::Select(components, V::Select(white, color, swapped), old);
}

}  // namespace qde

#endif
