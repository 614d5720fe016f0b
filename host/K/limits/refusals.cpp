// Counts and logs refused allocations.
#include "host/K/limits/refusals.h"

#include <cinttypes>
#include <cstdio>
#include <mutex>

#include "TRC_host.h"
#include "host/K/events/time_line.h"

namespace k {
namespace {

std::mutex theMutex;
K_MemoryRefusals theRefusals{};

void Count(Refuser refuser, std::uint64_t bytes) {
  const std::lock_guard lock(theMutex);
  theRefusals.last = static_cast<std::int32_t>(refuser);
  theRefusals.lastBytes = bytes;
  if (refuser == Refuser::Budget) ++theRefusals.byBudget;
  if (refuser == Refuser::Group) ++theRefusals.byGroup;
  if (refuser == Refuser::System) ++theRefusals.bySystem;
}

const char* NameOf(Refuser refuser) {
  switch (refuser) {
    case Refuser::Budget:
      return "the application's memory budget";
    case Refuser::Group:
      return "the memory limit of the process group";
    default:
      return "the system";
  }
}

// Allocates nothing, since memory is short.
void Log(Refuser refuser, std::uint64_t bytes) {
  if (TRC_GetLevel() > TRC_Level_NOTE) return;
  K_MemoryBudget budget;
  K_GetMemoryBudgetInForce(&budget);
  char text[200];
  std::snprintf(text, sizeof text,
                "%s refuses %" PRIu64 " bytes; %" PRIu64 " are in use, the budget is %" PRIu64,
                NameOf(refuser), bytes, budget.used, budget.bytes);
  TRC_Log(TRC_Level_NOTE, "K", "refusal", text);
}

}  // namespace

void NoteRefusal(Refuser refuser, std::uint64_t bytes) {
  if (refuser == Refuser::None) return;
  Count(refuser, bytes);
  NoteFailure();
  Log(refuser, bytes);
}

}  // namespace k

void K_GetMemoryRefusals(K_MemoryRefusals* refusals) {
  const std::lock_guard lock(k::theMutex);
  *refusals = k::theRefusals;
}
