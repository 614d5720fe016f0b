// The memory budget of the process.
#ifndef K_BUDGET_H
#define K_BUDGET_H

#include <cstdint>

#include "host/K/limits/refusals.h"

namespace k {

// Books `bytes` of memory that K hands out. Nothing is booked when that would
// go over the budget, and it says whose budget that is.
[[nodiscard]] Refuser ReserveMemory(std::uint64_t bytes);
void ReleaseMemory(std::uint64_t bytes);

}  // namespace k

#endif
