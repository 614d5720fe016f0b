// The transfer modes of 32-bit pixels in vectors. A file of a level includes
// this within its unnamed namespace, after it has said what Vector is and what
// is done with one: so each level has loops of its own, which the linker cannot
// take for those of another.
#ifndef QDE_VECTOR_MODES_H
#define QDE_VECTOR_MODES_H

// Four bytes, or eight, again and again.
inline Vector SpreadPixel(const Pixel32& pixel) {
  std::uint32_t word = 0;
  std::memcpy(&word, &pixel, sizeof word);
  return Spread32(word);
}
inline Vector SpreadEight(const void* numbers) {
  std::uint64_t word = 0;
  std::memcpy(&word, numbers, sizeof word);
  return Spread64(word);
}

inline std::uint8_t ByteOf(const Pixel32& pixel, std::size_t k) {
  std::uint8_t byte = 0;
  std::memcpy(&byte, reinterpret_cast<const std::uint8_t*>(&pixel) + k, sizeof byte);
  return byte;
}

// ---- The loop

// Fewer pixels than a vector has.
template <typename Combine>
void CombineFew(const Combine& combine, const std::uint8_t* source, std::uint8_t* destination,
                std::size_t bytes) {
  std::uint8_t from[kVectorBytes] = {};
  std::uint8_t to[kVectorBytes] = {};
  std::memcpy(from, source, bytes);
  std::memcpy(to, destination, bytes);
  Store(to, combine(Load(from), Load(to)));
  std::memcpy(destination, to, bytes);
}

// Whole pixels, no more than a vector has: to where a vector does not cross the
// lines of the cache, if the pixels themselves do not.
inline std::size_t BytesToAligned(const std::uint8_t* pixels) {
  const std::size_t beyond = reinterpret_cast<std::uintptr_t>(pixels) % kVectorBytes;
  return (kVectorBytes - beyond) / sizeof(Pixel32) * sizeof(Pixel32);
}

// The first and the last vector may reach into others. They are worked out
// before anything is written, and written when the rest is.
template <typename Combine>
void CombinePixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                   std::size_t count) {
  const Combine combine(operands);
  const std::size_t bytes = count * sizeof(Pixel32);
  if (bytes < kVectorBytes) {
    CombineFew(combine, source, destination, bytes);
    return;
  }
  const auto combined = [&](std::size_t at) {
    return combine(Load(source + at), Load(destination + at));
  };
  const std::size_t last = bytes - kVectorBytes;
  const Vector head = combined(0);
  const Vector tail = combined(last);
  for (std::size_t at = BytesToAligned(destination); at < last; at += kVectorBytes) {
    Store(destination + at, combined(at));
  }
  Store(destination, head);
  Store(destination + last, tail);
}

// ---- Boolean modes

// The bits of a pixel choose between two values; only the components change.
struct Choosing {
  explicit Choosing(const Operands& operands)
      : components(SpreadPixel(operands.components)),
        fore(SpreadPixel(operands.fore)),
        back(SpreadPixel(operands.back)) {}

  [[nodiscard]] Vector Of(Vector pixels, Vector black, Vector white, Vector old) const {
    return Select(components, Select(pixels, white, black), old);
  }

  Vector components;
  Vector fore;
  Vector back;
};

struct Or : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, fore, old, old); }
};
struct Exclusive : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, Not(old), old, old); }
};
struct Bic : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, back, old, old); }
};
struct NotCopy : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, back, fore, old); }
};
struct NotOr : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, old, fore, old); }
};
struct NotExclusive : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, old, Not(old), old); }
};
struct NotBic : Choosing {
  using Choosing::Choosing;
  Vector operator()(Vector pixels, Vector old) const { return Of(pixels, old, back, old); }
};

// ---- Copying with colours

// From `black` to `white`, both at 255, to the nearest 255th: with n = value +
// 128, n * 257 / 65536 is (n + n / 256) / 256.
class Mixer {
 public:
  Mixer(const Pixel32& black, const Pixel32& white) {
    std::uint16_t starts[4];
    std::uint16_t slopes[4];
    for (std::size_t k = 0; k < 4; ++k) {
      starts[k] = static_cast<std::uint16_t>(0xFF * ByteOf(black, k) + 0x80);
      slopes[k] = static_cast<std::uint16_t>(ByteOf(white, k) - ByteOf(black, k));
    }
    start_ = SpreadEight(starts);
    slope_ = SpreadEight(slopes);
  }

  [[nodiscard]] Vector Of(Vector pixels) const {
    return PackBytes(OfNumbers(LowNumbers(pixels)), OfNumbers(HighNumbers(pixels)));
  }

 private:
  [[nodiscard]] Vector OfNumbers(Vector numbers) const {
    const Vector sum = Add16(start_, Multiply16(numbers, slope_));
    return MultiplyHigh16(sum, Spread32(0x01010101));
  }

  Vector start_;
  Vector slope_;
};

struct ColoredCopy {
  explicit ColoredCopy(const Operands& operands) : mixer(operands.fore, operands.back) {}
  Vector operator()(Vector pixels, Vector /*old*/) const { return mixer.Of(pixels); }

  Mixer mixer;
};
struct ColoredNotCopy {
  explicit ColoredNotCopy(const Operands& operands)
      : components(SpreadPixel(operands.components)), mixer(operands.back, operands.fore) {}
  Vector operator()(Vector pixels, Vector old) const {
    return Select(components, mixer.Of(pixels), old);
  }

  Vector components;
  Mixer mixer;
};

// ---- Arithmetic modes

// From the lesser of the two to the greater by the greater's weight of 65535,
// in numbers of 16 bits. With product = high * 65536 + low, which is
// high * 65535 + high + low, the quotient is `high`, and one more where
// high + low reaches 65535.
struct AnyBlend {
  explicit AnyBlend(const Operands& operands) {
    std::uint16_t numbers[4];
    for (std::size_t k = 0; k < 4; ++k) {
      // The lower half is the first.
      std::memcpy(&numbers[k], reinterpret_cast<const std::uint32_t*>(&operands.weights) + k,
                  sizeof numbers[k]);
    }
    weights = SpreadEight(numbers);
  }

  Vector operator()(Vector pixels, Vector old) const {
    const Vector least = Min8(pixels, old);
    const Vector distance = Sub8(Max8(pixels, old), least);
    const Vector oldIsGreater = Equal8(pixels, least);
    const Vector low = Part(LowNumbers(distance), Xor(weights, LowTwice8(oldIsGreater)));
    const Vector high = Part(HighNumbers(distance), Xor(weights, HighTwice8(oldIsGreater)));
    return Add8(least, PackBytes(low, high));
  }

  static Vector Part(Vector distance, Vector weight) {
    const Vector high = MultiplyHigh16(distance, weight);
    const Vector low = Multiply16(distance, weight);
    return Sub16(high, Equal16(AddSaturated16(high, low), Spread32(0xFFFFFFFF)));
  }

  Vector weights;
};

// As BlendFactors says.
struct QuickBlend {
  explicit QuickBlend(const Operands& operands)
      : fromSource(SpreadPixel(operands.blend.fromSource)),
        signs(SpreadEight(&operands.blend.signs)),
        offsets(SpreadEight(&operands.blend.offsets)),
        factors(SpreadEight(&operands.blend.factors)) {}

  Vector operator()(Vector pixels, Vector old) const {
    const Vector low = Part(LowPairs8(pixels, old));
    const Vector high = Part(HighPairs8(pixels, old));
    return Add8(Select(fromSource, pixels, old), PackSigned(low, high));
  }

  [[nodiscard]] Vector Part(Vector pairs) const {
    const Vector raised = Add16(MultiplyPairs8(pairs, signs), offsets);
    return ShiftSigned16<6>(MultiplyHighSigned16(raised, factors));
  }

  Vector fromSource;
  Vector signs;
  Vector offsets;
  Vector factors;
};

inline void BlendPixels(const Operands& operands, const std::uint8_t* source,
                        std::uint8_t* destination, std::size_t count) {
  if (operands.blend.exist) {
    CombinePixels<QuickBlend>(operands, source, destination, count);
  } else {
    CombinePixels<AnyBlend>(operands, source, destination, count);
  }
}

struct WithComponents {
  explicit WithComponents(const Operands& operands)
      : components(SpreadPixel(operands.components)) {}
  Vector components;
};

struct AddPin : WithComponents {
  explicit AddPin(const Operands& operands)
      : WithComponents(operands), pin(SpreadPixel(operands.ceiling)) {}
  Vector operator()(Vector pixels, Vector old) const {
    return Min8(AddSaturated8(old, And(pixels, components)), pin);
  }
  Vector pin;
};
struct SubPin : WithComponents {
  explicit SubPin(const Operands& operands)
      : WithComponents(operands), pin(SpreadPixel(operands.floor)) {}
  Vector operator()(Vector pixels, Vector old) const {
    return Max8(SubSaturated8(old, And(pixels, components)), pin);
  }
  Vector pin;
};
struct AddOver : WithComponents {
  using WithComponents::WithComponents;
  Vector operator()(Vector pixels, Vector old) const { return Add8(old, And(pixels, components)); }
};
struct SubOver : WithComponents {
  using WithComponents::WithComponents;
  Vector operator()(Vector pixels, Vector old) const { return Sub8(old, And(pixels, components)); }
};
struct Maximum : WithComponents {
  using WithComponents::WithComponents;
  Vector operator()(Vector pixels, Vector old) const { return Max8(And(pixels, components), old); }
};
struct Minimum : WithComponents {
  using WithComponents::WithComponents;
  Vector operator()(Vector pixels, Vector old) const {
    return Min8(Or8(pixels, Not(components)), old);
  }
};

// ---- Modes that choose whole pixels

struct Transparent : WithComponents {
  explicit Transparent(const Operands& operands)
      : WithComponents(operands), back(SpreadPixel(operands.back)) {}
  Vector operator()(Vector pixels, Vector old) const {
    const Vector hidden = Equal32(And(Xor(pixels, back), components), Spread32(0));
    return Select(hidden, old, Select(components, pixels, old));
  }
  Vector back;
};

struct Hilite : WithComponents {
  explicit Hilite(const Operands& operands)
      : WithComponents(operands),
        hilite(SpreadPixel(operands.hilite)),
        ground(SpreadPixel(operands.ground)) {}
  Vector operator()(Vector pixels, Vector old) const {
    const Vector color = And(old, components);
    const Vector other = Select(Equal32(color, hilite), ground, color);
    const Vector swapped = Select(Equal32(color, ground), hilite, other);
    const Vector white = Equal32(And(pixels, components), components);
    return Select(components, Select(white, color, swapped), old);
  }
  Vector hilite;
  Vector ground;
};

// ---- By mode, plain and with colours

template <typename Combine>
constexpr RowRoutines Same() {
  return {CombinePixels<Combine>, CombinePixels<Combine>};
}

inline constexpr RowRoutines kCopyRoutines = {nullptr, CombinePixels<ColoredCopy>};
inline constexpr RowRoutines kNotCopyRoutines = {CombinePixels<NotCopy>,
                                                 CombinePixels<ColoredNotCopy>};

#endif
