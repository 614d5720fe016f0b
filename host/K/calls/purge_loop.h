// Frees memory that K or the application can do without.
#ifndef K_PURGE_LOOP_H
#define K_PURGE_LOOP_H

#include <cstdint>

namespace k {

// Runs one round: releases kept blocks of the pool, then the places that scrambled
// blocks left behind, then purgeable handles, then runs the application's purgers;
// stops as soon as `bytesNeeded` are free. Returns the bytes freed, 0 when nothing
// is left to free. Moves nothing.
std::uint64_t FreeMemory(std::uint64_t bytesNeeded);

// Releases all kept blocks and purges all purgeable handles.
void FreePurgeable();

}  // namespace k

#endif
