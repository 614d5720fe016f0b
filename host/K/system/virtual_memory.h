// Whole pages of memory from the system.
#ifndef K_VIRTUAL_MEMORY_H
#define K_VIRTUAL_MEMORY_H

#include <cstdint>

namespace k {

// The size of a page in bytes; at least 4096.
std::uint64_t PageSize();

// Returns zero-filled memory that starts on a page, or null. `size` is a multiple
// of the page size and not 0. Large blocks use large pages where the system has
// them, since page faults are most of the cost of a new frame.
void* MapMemory(std::uint64_t size);
// Unmaps memory of MapMemory. If the system refuses, the content is discarded and
// a later call tries again; until then three words at `writable`, an address
// within the memory, hold a note.
void UnmapMemory(void* base, std::uint64_t size, void* writable);

// Makes each access to these whole pages end the program. Returns false when the
// system refuses.
bool ForbidMemory(void* base, std::uint64_t size);

}  // namespace k

#endif
