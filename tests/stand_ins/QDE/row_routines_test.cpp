// The row routines of each level against the plain loops.
#include "host/QDE/rows/row_routines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "simd/processor_level.h"

namespace {

using qde::Operands;
using qde::Pixel32;
using simd::Level;
using Bytes = std::vector<std::uint8_t>;

constexpr std::int16_t kNumbers[] = {0, 1, 2, 3, 4, 5, 6, 7, 32, 33, 34, 35, 36, 37, 38, 39, 50};
constexpr std::uint16_t kWeights[] = {0, 1, 0x3FFF, 0x4000, 0x7F7F, 0x8000, 0x8080, 65534, 65535};

std::vector<Level> LevelsBeyondBaseline() {
  std::vector<Level> levels;
  for (const Level level : simd::kAllLevels) {
    if (level != Level::Baseline && level <= simd::ProcessorLevel()) levels.push_back(level);
  }
  return levels;
}

class Any {
 public:
  std::uint8_t Byte() { return static_cast<std::uint8_t>(generator_()); }
  // Often an end, where the modes differ most.
  std::uint8_t Component() {
    constexpr std::uint8_t kEnds[] = {0x00, 0xFF, 0x80};
    return generator_() % 2 == 0 ? Byte() : kEnds[generator_() % 3];
  }
  std::uint16_t Weight() {
    const auto weight = static_cast<std::uint16_t>(generator_());
    return generator_() % 2 == 0 ? weight : kWeights[generator_() % std::size(kWeights)];
  }
  qde::Color Color() { return {Component(), Component(), Component()}; }
  Bytes Components(std::size_t count) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) byte = Component();
    return bytes;
  }

 private:
  std::mt19937 generator_{20261122};
};

Operands AnyOperands(Any* any, qde::Format format) {
  const qde::Color op = any->Color();
  const qde::Color back = any->Color();
  Operands operands{};
  operands.components = ToPixel(qde::kWhite, format);
  operands.fore = ToPixel(any->Color(), format);
  operands.back = ToPixel(back, format, 0xFF);
  operands.hilite = ToPixel(any->Color(), format);
  operands.ground = ToPixel(back, format);
  operands.ceiling = ToPixel(op, format, 0xFF);
  operands.floor = ToPixel(op, format);
  for (std::size_t k = 0; k < 4; ++k) {
    operands.weights[k] = operands.components[k] != 0 ? any->Weight() : 0;
  }
  operands.blend = qde::FindBlendFactors(operands.weights);
  return operands;
}

// Pixels that include those that modes 36 and 50 compare with.
Bytes AnyPixels(Any* any, const Operands& operands, std::size_t count) {
  Bytes pixels = any->Components(count * 4);
  for (std::size_t i = 0; i < count; ++i) {
    const Pixel32* const special[] = {&operands.back, &operands.hilite, &operands.ground};
    const std::size_t which = any->Byte() % 8U;
    if (which >= std::size(special)) continue;
    std::memcpy(&pixels[4 * i], special[which]->data(), 4);
    if (any->Byte() % 2 == 0) pixels[4 * i + (operands.components[0] == 0 ? 0 : 3)] = any->Byte();
  }
  return pixels;
}

constexpr std::size_t kMargin = 80;

// All of the memory about the run.
Bytes Combine(qde::RowRoutine routine, const Operands& operands, const Bytes& source,
              const Bytes& destination, std::size_t from, std::size_t to) {
  Bytes memory(destination.size() + 2 * kMargin, 0xA5);
  std::copy(destination.begin(), destination.end(), &memory[kMargin + to]);
  // Never null, though it may be empty.
  Bytes shifted(from + source.size() + 1);
  std::copy(source.begin(), source.end(), &shifted[from]);
  routine(operands, &shifted[from], &memory[kMargin + to], destination.size() / 4);
  return memory;
}

void ExpectEqual(const Operands& operands, const Bytes& source, const Bytes& destination,
                 std::size_t from, std::size_t to) {
  for (const std::int16_t number : kNumbers) {
    const qde::RowRoutines plain = qde::FindMode(number, Level::Baseline)->direct;
    const Bytes expected = Combine(plain.plain, operands, source, destination, from, to);
    const Bytes colored = Combine(plain.colored, operands, source, destination, from, to);
    for (const Level level : LevelsBeyondBaseline()) {
      const qde::RowRoutines routines = qde::FindMode(number, level)->direct;
      ASSERT_EQ(Combine(routines.plain, operands, source, destination, from, to), expected)
          << "mode " << number << ", " << NameOf(level) << ", " << source.size() / 4 << " pixels";
      ASSERT_EQ(Combine(routines.colored, operands, source, destination, from, to), colored)
          << "mode " << number << ", colours, " << NameOf(level) << ", " << source.size() / 4
          << " pixels";
    }
  }
}

TEST(RowRoutines, OfAllLevelsHaveAllModes) {
  for (const Level level : LevelsBeyondBaseline()) {
    for (const std::int16_t number : kNumbers) ASSERT_NE(qde::FindMode(number, level), nullptr);
    EXPECT_EQ(qde::FindMode(8, level), nullptr);
  }
}

TEST(RowRoutines, OfAllLevelsCombineRunsOfAnyLengthAnywhere) {
  Any any;
  constexpr std::size_t kFourVectors = 64;
  for (std::size_t count = 0; count <= kFourVectors + 3 && !HasFatalFailure(); ++count) {
    for (std::size_t shift = 0; shift < 8 && !HasFatalFailure(); ++shift) {
      const auto format = shift % 2 == 0 ? qde::kARGB : qde::kBGRA;
      const Operands operands = AnyOperands(&any, format);
      const Bytes source = AnyPixels(&any, operands, count);
      const Bytes destination = AnyPixels(&any, operands, count);
      ExpectEqual(operands, source, destination, any.Byte() % 64U, any.Byte() % 64U);
    }
  }
}

TEST(RowRoutines, OfAllLevelsCombineAllPairsOfBytes) {
  Bytes source;
  Bytes destination;
  for (std::size_t i = 0; i < 256 * 256; ++i) {
    for (std::size_t k = 0; k < 4; ++k) {
      source.push_back(static_cast<std::uint8_t>(i + 64 * k));
      destination.push_back(static_cast<std::uint8_t>((i >> 8) + 32 * k));
    }
  }
  Any any;
  for (const qde::Format format : {qde::kARGB, qde::kBGRA}) {
    for (const std::uint16_t weight : kWeights) {
      Operands operands = AnyOperands(&any, format);
      for (std::size_t k = 0; k < 4; ++k) {
        if (operands.components[k] != 0) operands.weights[k] = weight;
      }
      operands.blend = qde::FindBlendFactors(operands.weights);
      ExpectEqual(operands, source, destination, 0, 0);
      if (HasFatalFailure()) return;
    }
  }
}

// Both ways of blending, for all that a component can differ by.
TEST(RowRoutines, OfAllLevelsBlendByAllWeights) {
  Bytes source;
  Bytes destination;
  for (int t = -255; t <= 255; ++t) {
    source.insert(source.end(), 4, static_cast<std::uint8_t>(t > 0 ? t : 0));
    destination.insert(destination.end(), 4, static_cast<std::uint8_t>(t < 0 ? -t : 0));
  }
  const qde::RowRoutine plain = qde::FindMode(32, Level::Baseline)->direct.plain;
  int withoutFactors = 0;
  for (std::uint32_t weight = 0; weight <= 0xFFFF; weight += 4) {
    Operands operands{};
    operands.weights = {weight, weight + 1, weight + 2, weight + 3};
    const Bytes expected = Combine(plain, operands, source, destination, 0, 0);
    const auto factors = qde::FindBlendFactors(operands.weights);
    withoutFactors += factors.exist ? 0 : 1;
    for (const Level level : LevelsBeyondBaseline()) {
      const qde::RowRoutine blend = qde::FindMode(32, level)->direct.plain;
      operands.blend = {};
      ASSERT_EQ(Combine(blend, operands, source, destination, 0, 0), expected)
          << weight << ", " << NameOf(level);
      operands.blend = factors;
      ASSERT_EQ(Combine(blend, operands, source, destination, 0, 0), expected)
          << weight << ", with factors, " << NameOf(level);
    }
  }
  EXPECT_LT(withoutFactors, 100);
}

}  // namespace
