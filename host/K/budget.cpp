#include "budget.h"

#include <algorithm>
#include <atomic>

#include "K_host.h"

namespace k {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 48;

std::atomic<std::uint64_t> theBudget{0};
std::atomic<std::uint64_t> theReserve{0};

// Bookings that do not balance may leave the total below zero.
std::uint64_t BookedApplicationMemory() {
  K_MemoryTotals totals;
  K_GetMemoryTotals(&totals);
  return static_cast<std::uint64_t>(std::max<std::int64_t>(totals.application, 0));
}

bool Fits(std::uint64_t used, std::uint64_t bytes, std::uint64_t budget) {
  return used <= budget && bytes <= budget - used;
}

}  // namespace

bool ReserveMemory(std::uint64_t bytes) {
  // No system has that much, and the sums below cannot overflow.
  if (bytes > kMostBytes) return false;
  const std::uint64_t budget = theBudget.load();
  const std::uint64_t booked = budget != 0 ? BookedApplicationMemory() : 0;
  std::uint64_t reserve = theReserve.load();
  do {
    if (budget != 0 && !Fits(reserve + booked, bytes, budget)) return false;
  } while (!theReserve.compare_exchange_weak(reserve, reserve + bytes));
  return true;
}

void ReleaseMemory(std::uint64_t bytes) {
  theReserve -= bytes;
}

}  // namespace k

void K_SetMemoryBudget(std::uint64_t bytes) {
  k::theBudget = bytes;
}

std::uint64_t K_GetMemoryBudget() {
  return k::theBudget;
}
