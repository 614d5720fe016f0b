// Counts and logs refused allocations.
#ifndef K_REFUSALS_H
#define K_REFUSALS_H

#include <cstdint>

#include "K_host.h"

namespace k {

// The limit that refused an allocation.
enum class Refuser : std::int32_t {
  None = K_MemoryLimit_NONE,
  Budget = K_MemoryLimit_BUDGET,
  Group = K_MemoryLimit_GROUP,
  System = K_MemoryLimit_SYSTEM
};

// Counts a refusal and logs it; does nothing for Refuser::None. Callers hold no
// lock: a log sink may call K.
void NoteRefusal(Refuser refuser, std::uint64_t bytes);

}  // namespace k

#endif
