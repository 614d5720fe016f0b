// Mixing of colours for vectors of any width: colouring copies and blends of 32-bit
// pixels. Included like vector_modes.h.
#ifndef QDE_VECTOR_MIXING_H
#define QDE_VECTOR_MIXING_H

#include "host/QDE/rows/vector_modes.h"

namespace qde {

template <typename V>
VectorOf<V> LowNumbers(VectorOf<V> bytes) {
  return V::LowPairs8(bytes, V::Spread32(0));
}
template <typename V>
VectorOf<V> HighNumbers(VectorOf<V> bytes) {
  return V::HighPairs8(bytes, V::Spread32(0));
}

template <typename V>
std::uint8_t ByteOf(const Pixel32& pixel, std::size_t k) {
  std::uint8_t byte = 0;
  std::memcpy(&byte, reinterpret_cast<const std::uint8_t*>(&pixel) + k, sizeof byte);
  return byte;
}

// From `black` to `white`, both at 255, to the nearest 255th: with n = value +
// 128, n * 257 / 65536 is (n + n / 256) / 256.
template <typename V>
class Mixer {
 public:
  Mixer(const Pixel32& black, const Pixel32& white) {
    std::uint16_t starts[4];
    std::uint16_t slopes[4];
    for (std::size_t k = 0; k < 4; ++k) {
      starts[k] = static_cast<std::uint16_t>(0xFF * ByteOf<V>(black, k) + 0x80);
      slopes[k] = static_cast<std::uint16_t>(ByteOf<V>(white, k) - ByteOf<V>(black, k));
    }
    start_ = SpreadEight<V>(starts);
    slope_ = SpreadEight<V>(slopes);
  }

  [[nodiscard]] VectorOf<V> Of(VectorOf<V> pixels) const {
    return V::PackUnsigned(OfNumbers(LowNumbers<V>(pixels)), OfNumbers(HighNumbers<V>(pixels)));
  }

 private:
  [[nodiscard]] VectorOf<V> OfNumbers(VectorOf<V> numbers) const {
    const VectorOf<V> sum = V::Add16(start_, V::Multiply16(numbers, slope_));
    return V::MultiplyHigh16(sum, V::Spread32(0x01010101));
  }

  VectorOf<V> start_;
  VectorOf<V> slope_;
};

template <typename V>
struct ColoredCopy {
  explicit ColoredCopy(const Operands& operands) : mixer(operands.fore, operands.back) {}
  VectorOf<V> operator()(VectorOf<V> pixels, VectorOf<V> /*old*/) const { return mixer.Of(pixels); }

  Mixer<V> mixer;
};

template <typename V>
struct ColoredNotCopy {
  explicit ColoredNotCopy(const Operands& operands)
      : components(SpreadPixel<V>(operands.components)), mixer(operands.back, operands.fore) {}
  VectorOf<V> operator()(VectorOf<V> pixels, VectorOf<V> old) const {
    return V::Select(components, mixer.Of(pixels), old);
  }

  VectorOf<V> components;
  Mixer<V> mixer;
};

// From the lesser of the two to the greater by the greater's weight of 65535,
// in numbers of 16 bits. With product = high * 65536 + low, which is
// high * 65535 + high + low, the quotient is `high`, and one more where
// high + low reaches 65535.
template <typename V>
struct AnyBlend {
  explicit AnyBlend(const Operands& operands) {
    std::uint16_t numbers[4];
    for (std::size_t k = 0; k < 4; ++k) {
      // The lower half is the first.
      std::memcpy(&numbers[k], reinterpret_cast<const std::uint32_t*>(&operands.weights) + k,
                  sizeof numbers[k]);
    }
    weights = SpreadEight<V>(numbers);
  }

  VectorOf<V> operator()(VectorOf<V> pixels, VectorOf<V> old) const {
    const VectorOf<V> least = V::Min8(pixels, old);
    const VectorOf<V> distance = V::Sub8(V::Max8(pixels, old), least);
    const VectorOf<V> oldIsGreater = V::Equal8(pixels, least);
    const VectorOf<V> low =
        Part(LowNumbers<V>(distance), V::Xor(weights, V::LowPairs8(oldIsGreater, oldIsGreater)));
    const VectorOf<V> high =
        Part(HighNumbers<V>(distance), V::Xor(weights, V::HighPairs8(oldIsGreater, oldIsGreater)));
    return V::Add8(least, V::PackUnsigned(low, high));
  }

  static VectorOf<V> Part(VectorOf<V> distance, VectorOf<V> weight) {
    const VectorOf<V> high = V::MultiplyHigh16(distance, weight);
    const VectorOf<V> low = V::Multiply16(distance, weight);
    return V::Sub16(high, V::Equal16(V::AddSaturated16(high, low), V::Spread32(0xFFFFFFFF)));
  }

  VectorOf<V> weights;
};

// By the formula at BlendFactors.
template <typename V>
struct QuickBlend {
  explicit QuickBlend(const Operands& operands)
      : fromSource(SpreadPixel<V>(operands.blend.fromSource)),
        signs(SpreadEight<V>(&operands.blend.signs)),
        offsets(SpreadEight<V>(&operands.blend.offsets)),
        factors(SpreadEight<V>(&operands.blend.factors)) {}

  VectorOf<V> operator()(VectorOf<V> pixels, VectorOf<V> old) const {
    const VectorOf<V> low = Part(V::LowPairs8(pixels, old));
    const VectorOf<V> high = Part(V::HighPairs8(pixels, old));
    return V::Add8(V::Select(fromSource, pixels, old), V::PackSigned(low, high));
  }

  [[nodiscard]] VectorOf<V> Part(VectorOf<V> pairs) const {
    const VectorOf<V> raised = V::Add16(V::MultiplyPairs8(pairs, signs), offsets);
    return V::template ShiftRightSigned16<6>(V::MultiplyHighSigned16(raised, factors));
  }

  VectorOf<V> fromSource;
  VectorOf<V> signs;
  VectorOf<V> offsets;
  VectorOf<V> factors;
};

template <typename V>
void BlendPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                 std::size_t count) {
  if (operands.blend.exist) {
    CombinePixels<V, QuickBlend<V>>(operands, source, destination, count);
  } else {
    CombinePixels<V, AnyBlend<V>>(operands, source, destination, count);
  }
}

}  // namespace qde

#endif
