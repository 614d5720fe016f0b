// Computes the factors of a blend and proves each for all differences.
#include "host/QDE/rows/blend_factors.h"

#include <algorithm>
#include <optional>

namespace qde {
namespace {

constexpr int kScale = 64;
constexpr int kShift = 22;
constexpr int kMost = 255;
constexpr int kMostOffset = 32767 - kScale * kMost;

struct Factor {
  int factor;
  int offset;
};

// Quotients are raised by 256, so that none is negative.
constexpr std::uint32_t kRaised = 256;
std::uint32_t DivideByOnes(std::uint32_t product) {
  return (product + 1 + (product >> 16)) >> 16;
}

// offset * factor has to raise each product to its quotient, but not to the next.
std::optional<Factor> TryFactor(int weight, int factor) {
  auto product = static_cast<std::uint32_t>(-kMost * weight) + kRaised * 0xFFFF;
  int scaled = -kMost * kScale * factor;
  int least = 0;
  int most = 0;
  for (int t = -kMost; t <= kMost; ++t) {
    const int quotient = static_cast<int>(DivideByOnes(product) - kRaised);
    const int missing = quotient * (1 << kShift) - scaled;
    least = std::max(least, missing);
    most = std::min(most, missing);
    product += static_cast<std::uint32_t>(weight);
    scaled += kScale * factor;
  }
  const int offset = (least + factor - 1) / factor;
  const bool exact = offset <= kMostOffset && offset * factor < most + (1 << kShift);
  return exact ? std::optional(Factor{factor, offset}) : std::nullopt;
}

// For weights below a half.
std::optional<Factor> FindFactor(int weight) {
  if (weight == 0) return Factor{0, 0};
  const auto found = TryFactor(weight, weight);
  return found || weight == 32767 ? found : TryFactor(weight, weight + 1);
}

}  // namespace

BlendFactors FindBlendFactors(const std::array<std::uint32_t, 4>& weights) {
  BlendFactors factors{};
  factors.exist = true;
  for (std::size_t k = 0; k < weights.size(); ++k) {
    const bool fromSource = weights[k] > 32767;
    const auto found = FindFactor(static_cast<int>(fromSource ? 0xFFFF - weights[k] : weights[k]));
    factors.exist = factors.exist && found.has_value();
    if (!found) continue;
    factors.fromSource[k] = fromSource ? 0xFF : 0x00;
    factors.signs[2 * k] = fromSource ? -kScale : kScale;
    factors.signs[2 * k + 1] = fromSource ? kScale : -kScale;
    factors.offsets[k] = static_cast<std::int16_t>(found->offset);
    factors.factors[k] = static_cast<std::int16_t>(found->factor);
  }
  return factors;
}

}  // namespace qde
