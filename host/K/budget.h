// The memory budget of the process.
#ifndef K_BUDGET_H
#define K_BUDGET_H

#include <cstdint>

namespace k {

// Books `bytes` of memory that K hands out; false, and nothing booked, when
// that would go over the budget.
bool ReserveMemory(std::uint64_t bytes);
void ReleaseMemory(std::uint64_t bytes);

}  // namespace k

#endif
