// The memory budget of the process.
#include "host/K/limits/budget.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <mutex>

#include "K_host.h"
#include "host/K/system/memory_group.h"

namespace k {
namespace {

constexpr std::uint64_t kMostBytes = std::uint64_t{1} << 48;

std::atomic<std::uint64_t> theBudget{0};
std::atomic<std::uint64_t> theReserve{0};

// The bytes that the limits of the process group allow K, as of the last reading.
std::atomic<std::uint64_t> theGroupBudget{kNoLimit};
// The limits are read again when this many bytes are in use, since the use of the
// group's other processes changes.
std::atomic<std::uint64_t> theNextReading{0};
std::mutex theReadingMutex;
std::array<char, 1024> theGroupRoot{};

// The total is negative when more was released than allocated.
std::uint64_t BookedApplicationMemory() {
  K_MemoryTotals totals;
  K_GetMemoryTotals(&totals);
  return static_cast<std::uint64_t>(std::max<std::int64_t>(totals.application, 0));
}

std::uint64_t UsedMemory() {
  return theReserve + BookedApplicationMemory();
}

bool Fits(std::uint64_t used, std::uint64_t bytes, std::uint64_t budget) {
  return used <= budget && bytes <= budget - used;
}

bool Book(std::uint64_t bytes, std::uint64_t budget) {
  const std::uint64_t booked = budget != kNoLimit ? BookedApplicationMemory() : 0;
  std::uint64_t reserve = theReserve.load();
  do {
    if (!Fits(reserve + booked, bytes, budget)) return false;
  } while (!theReserve.compare_exchange_weak(reserve, reserve + bytes));
  return true;
}

// The memory in use by the group includes that of K.
void ReadGroup() {
  const std::lock_guard lock(theReadingMutex);
  const GroupMemory memory = ReadGroupMemory(theGroupRoot.data());
  const bool limited = memory.limit != kNoLimit;
  const std::uint64_t used = UsedMemory();
  theGroupBudget = limited ? std::min(memory.limit, used + memory.room) : kNoLimit;
  theNextReading = limited ? used + memory.limit / 16 : kNoLimit;
}

// Without a limit there is only one reading.
std::uint64_t GroupBudgetFor(std::uint64_t bytes) {
  const std::uint64_t next = theNextReading;
  if (next != kNoLimit && UsedMemory() + bytes >= next) ReadGroup();
  return theGroupBudget;
}

}  // namespace

Refuser ReserveMemory(std::uint64_t bytes) {
  // No system has as much, and below it the sums above cannot overflow.
  if (bytes > kMostBytes) return Refuser::System;
  const std::uint64_t budget = theBudget;
  if (budget != 0) return Book(bytes, budget) ? Refuser::None : Refuser::Budget;
  if (Book(bytes, GroupBudgetFor(bytes))) return Refuser::None;
  // The group may use less by now.
  ReadGroup();
  return Book(bytes, theGroupBudget) ? Refuser::None : Refuser::Group;
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

Boolean K_ReadMemoryGroup(const char* root) {
  const char* folder = root != nullptr ? root : "";
  const std::size_t size = std::strlen(folder) + 1;
  if (size > k::theGroupRoot.size()) return 0;
  {
    const std::lock_guard lock(k::theReadingMutex);
    std::memcpy(k::theGroupRoot.data(), folder, size);
  }
  k::ReadGroup();
  return 1;
}

void K_GetMemoryBudgetInForce(K_MemoryBudget* budget) {
  const std::uint64_t own = k::theBudget;
  const std::uint64_t group = k::GroupBudgetFor(0);
  *budget = {.bytes = 0, .used = k::UsedMemory(), .setBy = K_MemoryLimit_NONE};
  if (own != 0) {
    budget->bytes = own;
    budget->setBy = K_MemoryLimit_BUDGET;
  } else if (group != k::kNoLimit) {
    budget->bytes = group;
    budget->setBy = K_MemoryLimit_GROUP;
  }
}
