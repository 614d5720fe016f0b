// Memory straight from the system, in whole pages.
#ifndef K_VIRTUAL_MEMORY_H
#define K_VIRTUAL_MEMORY_H

#include <cstdint>

namespace k {

// The bytes of a page; at least 4096.
std::uint64_t PageSize();

// Zero-filled memory that starts on a page; null when there is none. `size` is
// whole pages and not 0. Large blocks are set up for large pages where the
// system has them, since most of the cost of a fresh frame is page faults.
void* MapMemory(std::uint64_t size);
// `writable` is an address in it, for three words that are noted there when the
// system does not take the pages back at once: then they are empty, and go with
// others later.
void UnmapMemory(void* base, std::uint64_t size, void* writable);

// Makes each access to these whole pages end the program; false when the
// system cannot.
bool ForbidMemory(void* base, std::uint64_t size);

}  // namespace k

#endif
