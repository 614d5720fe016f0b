// Reads the environment variables and configures K.
#include "tools/pxl/module/environment.h"

#include <charconv>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "K_host.h"
#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

constexpr std::uint32_t kDefaultMarker = 0xA5C35A3C;
std::uint32_t marker = kDefaultMarker;

// The number in the variable, if it is set.
template <typename Number>
std::optional<Number> NumberIn(const char* variable, int base) {
  const char* value = std::getenv(variable);
  if (value == nullptr) return std::nullopt;
  const std::string_view text = value;
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw UsageError(variable, "is not a number: " + std::string(text));
  }
  return number;
}

}  // namespace

void ApplyEnvironment() {
  const bool scramble = NumberIn<std::uint32_t>("PXL_SCRAMBLE", 10).value_or(0) != 0;
  K_SetScramble(scramble ? 1 : 0);
  if (const auto budget = NumberIn<std::uint64_t>("PXL_MEMORY_BUDGET", 10)) {
    K_SetMemoryBudget(*budget);
  }
  marker = NumberIn<std::uint32_t>("PXL_FILL", 16).value_or(kDefaultMarker);
}

std::int32_t FillMarker() {
  return static_cast<std::int32_t>(marker);
}

}  // namespace pxl
