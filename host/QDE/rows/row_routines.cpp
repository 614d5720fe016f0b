// The plain loops of the transfer modes, and the table of modes for each level.
#include "host/QDE/rows/row_routines.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>

#include "host/QDE/rows/level_routines.h"

namespace qde {
namespace {

std::uint32_t WordOf(const Pixel32& pixel) {
  return std::bit_cast<std::uint32_t>(pixel);
}

// value / (2^bits - 1), rounded down, for values below 2^(2 * bits) - 2^bits.
// With value = q * (2^bits - 1) + r, value >> bits is q, or q - 1 when r < q.
// In both cases the sum reaches q * 2^bits, and not the next multiple.
template <int kBits>
constexpr std::uint32_t DivideByOnes(std::uint32_t value) {
  return (value + 1 + (value >> kBits)) >> kBits;
}

// ---- The forms of loop

// Whole words, of which only the components are replaced.
template <typename Combine>
void ForPixels(const Operands& operands, const std::uint8_t* __restrict source,
               std::uint8_t* __restrict destination, std::size_t count, Combine combine) {
  const std::uint32_t components = WordOf(operands.components);
  for (std::size_t i = 0; i < count; ++i) {
    const auto old = Load<std::uint32_t>(destination, i);
    const std::uint32_t result = combine(Load<std::uint32_t>(source, i), old);
    Store(destination, i, (result & components) | (old & ~components));
  }
}

// Byte by byte; the last argument of `combine` is the position in the pixel.
template <typename Combine>
void ForBytes(const std::uint8_t* __restrict source, std::uint8_t* __restrict destination,
              std::size_t count, Combine combine) {
  for (std::size_t i = 0; i < 4 * count; i += 4) {
    for (std::size_t k = 0; k < 4; ++k) {
      destination[i + k] = static_cast<std::uint8_t>(combine(source[i + k], destination[i + k], k));
    }
  }
}

// ---- Boolean modes: the bits of the source choose between two values

enum class Value { Fore, Back, Old, Inverse };

template <Value kValue, typename Word>
Word Get(Word fore, Word back, Word old) {
  if constexpr (kValue == Value::Fore) return fore;
  if constexpr (kValue == Value::Back) return back;
  if constexpr (kValue == Value::Old) return old;
  return static_cast<Word>(~old);
}

// The values that replace black and white bits.
template <Value kForBlack, Value kForWhite>
struct Choice {
  template <typename Word>
  static Word Of(Word whiteness, Word fore, Word back, Word old) {
    return static_cast<Word>((Get<kForBlack>(fore, back, old) & ~whiteness) |
                             (Get<kForWhite>(fore, back, old) & whiteness));
  }

  static void OfPixels(const Operands& operands, const std::uint8_t* source,
                       std::uint8_t* destination, std::size_t count) {
    ForPixels(operands, source, destination, count,
              [fore = WordOf(operands.fore), back = WordOf(operands.back)](
                  std::uint32_t pixel, std::uint32_t old) { return Of(pixel, fore, back, old); });
  }

  // As an index, black has all bits set.
  static void OfIndices(const Operands& /*operands*/, const std::uint8_t* __restrict source,
                        std::uint8_t* __restrict destination, std::size_t count) {
    constexpr std::uint8_t kBlackIndex = 0xFF;
    constexpr std::uint8_t kWhiteIndex = 0x00;
    for (std::size_t i = 0; i < count; ++i) {
      const auto whiteness = static_cast<std::uint8_t>(~source[i]);
      destination[i] = Of(whiteness, kBlackIndex, kWhiteIndex, destination[i]);
    }
  }
};

using Or = Choice<Value::Fore, Value::Old>;
using Xor = Choice<Value::Inverse, Value::Old>;
using Bic = Choice<Value::Back, Value::Old>;
using NotCopy = Choice<Value::Back, Value::Fore>;
using NotOr = Choice<Value::Old, Value::Fore>;
using NotXor = Choice<Value::Old, Value::Inverse>;
using NotBic = Choice<Value::Old, Value::Back>;

// ---- Copying

void CopyPixels(const Operands& /*operands*/, const std::uint8_t* source, std::uint8_t* destination,
                std::size_t count) {
  std::memcpy(destination, source, 4 * count);
}

void CopyIndices(const Operands& /*operands*/, const std::uint8_t* source,
                 std::uint8_t* destination, std::size_t count) {
  std::memcpy(destination, source, count);
}

// The colour at `whiteness` of the way from black to white, to the nearest.
std::uint32_t Mix(std::uint32_t whiteness, std::uint32_t black, std::uint32_t white) {
  constexpr std::uint32_t kHalf = 0xFF / 2;
  return DivideByOnes<8>(black * (0xFF - whiteness) + white * whiteness + kHalf);
}

// From 0 to FF, the fourth byte is the source's own.
void ColorPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                 std::size_t count) {
  ForBytes(source, destination, count,
           [fore = operands.fore, back = operands.back](std::uint32_t byte, std::uint32_t,
                                                        std::size_t k) {
             return Mix(byte, fore[k], back[k]);
           });
}

void ColorInversePixels(const Operands& operands, const std::uint8_t* source,
                        std::uint8_t* destination, std::size_t count) {
  ForBytes(source, destination, count,
           [fore = operands.fore, back = operands.back, components = operands.components](
               std::uint32_t byte, std::uint32_t old, std::size_t k) {
             const std::uint32_t mixed = Mix(byte, back[k], fore[k]);
             return (mixed & components[k]) | (old & ~std::uint32_t{components[k]});
           });
}

// ---- Arithmetic modes: component by component

// 16 bits hold a sum or a difference, and a vector compares twice as many of them
// as of 32 bits.
std::int16_t Narrow(int value) {
  return static_cast<std::int16_t>(value);
}

void BlendPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                 std::size_t count) {
  ForBytes(source, destination, count,
           [weights = operands.weights](std::uint32_t byte, std::uint32_t old, std::size_t k) {
             // old * (65535 - weight) + byte * weight, with one product only.
             return DivideByOnes<16>((old << 16) - old + weights[k] * (byte - old));
           });
}

void AddPinPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                  std::size_t count) {
  ForBytes(
      source, destination, count,
      [pin = operands.ceiling, components = operands.components](int byte, int old, std::size_t k) {
        return std::min(Narrow(old + (byte & components[k])), Narrow(pin[k]));
      });
}

void AddOverPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                   std::size_t count) {
  ForBytes(source, destination, count,
           [components = operands.components](int byte, int old, std::size_t k) {
             return old + (byte & components[k]);
           });
}

void SubPinPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                  std::size_t count) {
  ForBytes(
      source, destination, count,
      [pin = operands.floor, components = operands.components](int byte, int old, std::size_t k) {
        return std::max(Narrow(old - (byte & components[k])), Narrow(pin[k]));
      });
}

void SubOverPixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                   std::size_t count) {
  ForBytes(source, destination, count,
           [components = operands.components](int byte, int old, std::size_t k) {
             return old - (byte & components[k]);
           });
}

void MaximumOfPixels(const Operands& operands, const std::uint8_t* source,
                     std::uint8_t* destination, std::size_t count) {
  ForBytes(source, destination, count,
           [components = operands.components](int byte, int old, std::size_t k) {
             return std::max(byte & components[k], old);
           });
}

void MinimumOfPixels(const Operands& operands, const std::uint8_t* source,
                     std::uint8_t* destination, std::size_t count) {
  ForBytes(source, destination, count,
           [components = operands.components](int byte, int old, std::size_t k) {
             return std::min(byte | (0xFF - components[k]), old);
           });
}

// ---- Modes that choose whole pixels

void TransparentPixels(const Operands& operands, const std::uint8_t* source,
                       std::uint8_t* destination, std::size_t count) {
  ForPixels(operands, source, destination, count,
            [back = WordOf(operands.back), components = WordOf(operands.components)](
                std::uint32_t pixel, std::uint32_t old) {
              return ((pixel ^ back) & components) == 0 ? old : pixel;
            });
}

void TransparentIndices(const Operands& operands, const std::uint8_t* __restrict source,
                        std::uint8_t* __restrict destination, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint8_t visible = operands.visible[source[i]];
    destination[i] = static_cast<std::uint8_t>((source[i] & visible) | (destination[i] & ~visible));
  }
}

void HilitePixels(const Operands& operands, const std::uint8_t* source, std::uint8_t* destination,
                  std::size_t count) {
  ForPixels(operands, source, destination, count,
            [ground = WordOf(operands.ground), hilite = WordOf(operands.hilite),
             components = WordOf(operands.components)](std::uint32_t pixel, std::uint32_t old) {
              const std::uint32_t color = old & components;
              const std::uint32_t other = color == hilite ? ground : color;
              const std::uint32_t swapped = color == ground ? hilite : other;
              return (pixel & components) == components ? color : swapped;
            });
}

// ---- The table

constexpr RowRoutines kNone = {nullptr, nullptr};

// For all colours of foreground and background.
constexpr RowRoutines Always(RowRoutine routine) {
  return {routine, routine};
}
// Only between black and white.
constexpr RowRoutines Plain(RowRoutine routine) {
  return {routine, nullptr};
}

using Modes = std::array<Mode, kModeCount>;

constexpr Modes kBaselineModes = {{
    {0, false, {CopyPixels, ColorPixels}, Plain(CopyIndices)},
    {1, true, Always(Or::OfPixels), Plain(Or::OfIndices)},
    {2, true, Always(Xor::OfPixels), Always(Xor::OfIndices)},
    {3, true, Always(Bic::OfPixels), Plain(Bic::OfIndices)},
    {4, false, {NotCopy::OfPixels, ColorInversePixels}, Plain(NotCopy::OfIndices)},
    {5, true, Always(NotOr::OfPixels), Plain(NotOr::OfIndices)},
    {6, true, Always(NotXor::OfPixels), Always(NotXor::OfIndices)},
    {7, true, Always(NotBic::OfPixels), Plain(NotBic::OfIndices)},
    {32, true, Always(BlendPixels), kNone},
    {33, true, Always(AddPinPixels), kNone},
    {34, true, Always(AddOverPixels), kNone},
    {35, true, Always(SubPinPixels), kNone},
    {36, true, Always(TransparentPixels), Always(TransparentIndices)},
    {37, true, Always(MaximumOfPixels), kNone},
    {38, true, Always(SubOverPixels), kNone},
    {39, true, Always(MinimumOfPixels), kNone},
    {50, true, Always(HilitePixels), kNone},
}};

// Replaces the plain loops by the routines of a level.
void Replace(RowRoutine* routine, RowRoutine faster) {
  if (faster != nullptr) *routine = faster;
}
Modes WithRoutinesOf(const LevelRoutines& level) {
  Modes modes = kBaselineModes;
  for (std::size_t i = 0; i < modes.size(); ++i) {
    Replace(&modes[i].direct.plain, level.direct[i].plain);
    Replace(&modes[i].direct.colored, level.direct[i].colored);
  }
  return modes;
}

const Modes& ModesOf(simd::Level level) {
  static const Modes sse41 = WithRoutinesOf(kSse41Routines);
  static const Modes avx2 = WithRoutinesOf(kAvx2Routines);
  static const Modes avx512 = WithRoutinesOf(kAvx512Routines);
  switch (level) {
    case simd::Level::Sse41:
      return sse41;
    case simd::Level::Avx2:
      return avx2;
    case simd::Level::Avx512:
      return avx512;
    default:
      return kBaselineModes;
  }
}

}  // namespace

const Mode* FindMode(std::int16_t number, simd::Level level) {
  const Modes& modes = ModesOf(level);
  const auto* const found = std::find_if(modes.begin(), modes.end(),
                                         [number](const Mode& m) { return m.number == number; });
  return found != modes.end() ? found : nullptr;
}

}  // namespace qde
