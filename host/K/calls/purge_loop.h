// Freeing memory that can be had back.
#ifndef K_PURGE_LOOP_H
#define K_PURGE_LOOP_H

#include <cstdint>

namespace k {

// One round: gives back kept blocks of the pool, then what scrambling left
// behind, then purgeable handles, then what the application's purgers find, and
// stops as soon as `bytesNeeded` are free. Gives the bytes freed; 0 says that
// nothing is left. Moves nothing.
std::uint64_t FreeMemory(std::uint64_t bytesNeeded);

// Gives back all kept blocks and purges all purgeable handles.
void FreePurgeable();

}  // namespace k

#endif
