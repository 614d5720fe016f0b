// The tick count.
#include <chrono>
#include <cstdint>

#include "QDE_host.h"

namespace {

using Ticks = std::chrono::duration<std::uint64_t, std::ratio<1, 60>>;

const auto kStart = std::chrono::steady_clock::now();

}  // namespace

std::uint32_t TickCount() {
  const auto elapsed = std::chrono::steady_clock::now() - kStart;
  return static_cast<std::uint32_t>(std::chrono::duration_cast<Ticks>(elapsed).count());
}
