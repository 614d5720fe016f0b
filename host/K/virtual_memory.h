// Memory straight from the system, in whole pages.
#ifndef K_VIRTUAL_MEMORY_H
#define K_VIRTUAL_MEMORY_H

#include <cstdint>

namespace k {

// Zero-filled memory whose address is a multiple of 4096; null when there is
// none. `size` is a multiple of 4096 and not 0. Large blocks are set up for
// large pages, since most of the cost of a fresh frame is page faults.
void* MapMemory(std::uint64_t size);
void UnmapMemory(void* base, std::uint64_t size);

}  // namespace k

#endif
