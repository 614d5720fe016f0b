// The application's purgers: routines that free memory.
#ifndef K_PURGERS_H
#define K_PURGERS_H

#include <cstdint>

namespace k {

// Calls the purgers in turn until `bytesNeeded` are free. Returns the bytes freed.
// Does nothing while a purger runs on the same thread.
std::uint64_t RunPurgers(std::uint64_t bytesNeeded);

}  // namespace k

#endif
