// Noise and deciding values, the same on every machine.
#include "tools/proof/inputs.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace proof {
namespace {

constexpr std::uint32_t kSign = 0x80000000;

// A simple generator: the distributions of the standard differ between libraries.
class Generator {
 public:
  std::uint32_t Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::uint32_t>(state_ >> 32);
  }

 private:
  std::uint64_t state_ = 20261121;
};

template <typename Element, typename Make>
Bytes Made(std::size_t count, Make make) {
  std::vector<Element> elements(count);
  for (std::size_t i = 0; i < count; ++i) elements[i] = static_cast<Element>(make(i));
  Bytes bytes(count * sizeof(Element));
  if (count != 0) std::memcpy(bytes.data(), elements.data(), bytes.size());
  return bytes;
}

bool TakesFloats(const Subject& subject) {
  return subject.source.elementBytes == 4 && subject.destination.elementBytes == 1;
}

// The float and its four neighbours on either side.
void AddAround(std::vector<std::uint32_t>& floats, double value) {
  constexpr std::uint32_t kReach = 4;
  const auto middle = std::bit_cast<std::uint32_t>(static_cast<float>(value));
  const std::uint32_t magnitude = middle & ~kSign;
  const std::uint32_t first = magnitude - std::min(magnitude, kReach);
  for (std::uint32_t i = first; i <= magnitude + kReach; ++i) floats.push_back(i);
}

}  // namespace

Bytes Noise(std::size_t bytes) {
  Generator generator;
  return Made<unsigned char>(bytes, [&](std::size_t) { return generator.Next() >> 24; });
}

Bytes SourceFor(const Subject& subject, std::size_t count) {
  if (!TakesFloats(subject)) return Noise(count * subject.source.elementBytes);
  Generator generator;
  return Made<float>(count, [&](std::size_t) {
    return static_cast<double>(generator.Next()) * 0x1.2p-32 - 0.0625;
  });
}

std::vector<std::uint32_t> DecidingFloats() {
  std::vector<std::uint32_t> floats = {
      0x7FC00000, 0x7F800001, 0x7FFFFFFF,  // NaNs, quiet, signalling, all ones
      0x7F800000, 0x7F7FFFFF,              // infinity, the largest
      0x00400000, 0x007FFFFF, 0x00800000,  // denormals, the smallest normal
  };
  for (int n = 0; n <= 256; ++n) AddAround(floats, n / 255.0);
  for (const double limit : {0x1p8, 0x1p15, 0x1p16, 0x1p31, 0x1p32, 0x1p63, 0x1p64}) {
    AddAround(floats, limit);
    AddAround(floats, limit / 255.0);
  }
  AddAround(floats, std::numeric_limits<float>::max() / 255.0);  // the product overflows
  const std::size_t positive = floats.size();
  for (std::size_t i = 0; i < positive; ++i) floats.push_back(floats[i] | kSign);
  return floats;
}

Bytes ValuesFor(const Subject& subject) {
  const auto index = [](std::size_t i) { return i; };
  if (subject.source.elementBytes == 1) return Made<std::uint8_t>(256, index);
  if (subject.source.elementBytes == 2) return Made<std::uint16_t>(65536, index);
  if (!TakesFloats(subject)) return SourceFor(subject, 256);
  const std::vector<std::uint32_t> floats = DecidingFloats();
  return Made<std::uint32_t>(floats.size(), [&](std::size_t i) { return floats[i]; });
}

}  // namespace proof
