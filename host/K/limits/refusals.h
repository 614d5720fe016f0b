// Who says no when memory is asked for.
#ifndef K_REFUSALS_H
#define K_REFUSALS_H

#include <cstdint>

#include "K_host.h"

namespace k {

enum class Refuser : std::int32_t {
  Nobody = K_MemoryLimit_NONE,
  Budget = K_MemoryLimit_BUDGET,
  Group = K_MemoryLimit_GROUP,
  System = K_MemoryLimit_SYSTEM
};

// Counts a refusal and logs it; does nothing when nobody refused. Not to be
// called under a lock: a log sink may call K.
void NoteRefusal(Refuser refuser, std::uint64_t bytes);

}  // namespace k

#endif
