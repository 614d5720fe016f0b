// The totals of memory that others booked.
#include <algorithm>
#include <cstdint>
#include <mutex>

#include "K_host.h"

namespace {

std::mutex theMutex;
K_MemoryTotals theTotals{};

}  // namespace

void K_AccountAllocation(std::int32_t delta) {
  const std::lock_guard lock(theMutex);
  theTotals.application += delta;
  theTotals.applicationPeak = std::max(theTotals.applicationPeak, theTotals.application);
}

void K_AccountSystemAllocation(std::int32_t delta) {
  const std::lock_guard lock(theMutex);
  theTotals.system += delta;
  theTotals.systemPeak = std::max(theTotals.systemPeak, theTotals.system);
}

void K_GetMemoryTotals(K_MemoryTotals* totals) {
  const std::lock_guard lock(theMutex);
  *totals = theTotals;
}
