// Compares samples of the use of the process.
#include "tools/pxl/system/growth.h"

#include <algorithm>
#include <array>
#include <iomanip>

namespace pxl {
namespace {

constexpr std::uint64_t kKiB = 1024;
constexpr std::uint64_t kMiB = 1024 * kKiB;
// The table of the nearest colours.
constexpr std::uint64_t kTouchedLater = 16 * kMiB;

using Number = std::uint64_t ProcessUse::*;

struct Quantity {
  const char* name;
  Number number;
  std::uint64_t allowance;
};
constexpr std::array<Quantity, 4> kQuantities = {{
    {"heap bytes", &ProcessUse::heap, 256 * kKiB},
    {"address bytes", &ProcessUse::addresses, 4 * kMiB},
    {"resident bytes", &ProcessUse::resident, kTouchedLater + 4 * kMiB},
    {"open handles", &ProcessUse::handles, 0},
}};

using Samples = std::vector<ProcessUse>::const_iterator;

std::uint64_t Most(Samples begin, Samples end, Number number) {
  std::uint64_t most = 0;
  for (; begin != end; ++begin) most = std::max(most, (*begin).*number);
  return most;
}

std::uint64_t Least(Samples begin, Samples end, Number number) {
  std::uint64_t least = (*begin).*number;
  for (; begin != end; ++begin) least = std::min(least, (*begin).*number);
  return least;
}

}  // namespace

std::optional<std::string> FindGrowth(const std::vector<ProcessUse>& samples) {
  const auto count = static_cast<std::ptrdiff_t>(samples.size());
  if (count < 4) return {};
  for (const Quantity& quantity : kQuantities) {
    const auto middle = samples.begin() + count / 2;
    const std::uint64_t before = Most(samples.begin(), middle, quantity.number);
    const std::uint64_t after = Least(samples.end() - count / 4, samples.end(), quantity.number);
    if (after > before + quantity.allowance) {
      return std::string(quantity.name) + " grow: " + std::to_string(before) + " and then " +
             std::to_string(after);
    }
  }
  return {};
}

void PrintProcessUse(std::ostream& out, const std::vector<ProcessUse>& samples) {
  for (const Quantity& quantity : kQuantities) {
    out << "  " << std::left << std::setw(20) << quantity.name << std::right
        << samples.front().*quantity.number << " -> " << samples.back().*quantity.number << "\n";
  }
}

}  // namespace pxl
