// The memory budget of the process.
#ifndef K_BUDGET_H
#define K_BUDGET_H

#include <cstdint>

#include "host/K/limits/refusals.h"

namespace k {

// Books `bytes` of memory that K allocates for callers. Returns Refuser::None; or
// books nothing and returns whose budget would be exceeded.
[[nodiscard]] Refuser ReserveMemory(std::uint64_t bytes);
void ReleaseMemory(std::uint64_t bytes);

}  // namespace k

#endif
