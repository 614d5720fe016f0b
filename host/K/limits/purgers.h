// The application's routines that free memory.
#ifndef K_PURGERS_H
#define K_PURGERS_H

#include <cstdint>

namespace k {

// Asks the purgers in turn until `bytesNeeded` are free; gives the bytes freed.
// Does nothing while a purger runs on the same thread.
std::uint64_t RunPurgers(std::uint64_t bytesNeeded);

}  // namespace k

#endif
