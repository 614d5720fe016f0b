// The totals of booked memory.
#include "host/K/limits/accounting.h"

#include <algorithm>
#include <cstdint>
#include <mutex>

#include "K_host.h"
#include "host/K/events/time_line.h"

namespace {

std::mutex theMutex;
K_MemoryTotals theTotals{};

void Book(std::int64_t& total, std::int64_t& peak, std::int32_t delta) {
  const std::lock_guard lock(theMutex);
  total += delta;
  peak = std::max(peak, total);
  k::NoteBookings(theTotals.application, theTotals.system);
}

}  // namespace

void k::NoteBookedTotals() {
  const std::lock_guard lock(theMutex);
  NoteBookings(theTotals.application, theTotals.system);
}

void K_AccountAllocation(std::int32_t delta) {
  Book(theTotals.application, theTotals.applicationPeak, delta);
}

void K_AccountSystemAllocation(std::int32_t delta) {
  Book(theTotals.system, theTotals.systemPeak, delta);
}

void K_GetMemoryTotals(K_MemoryTotals* totals) {
  const std::lock_guard lock(theMutex);
  *totals = theTotals;
}
