// All calls of K to a POSIX system for pages. Tests replace them by calls that
// fail. Results and errno are those of the system.
#ifndef K_SYSTEM_CALLS_POSIX_H
#define K_SYSTEM_CALLS_POSIX_H

#include <cstddef>

namespace k::system {

// Maps private, zero-filled memory for reading and writing.
void* Map(std::size_t size);
int Unmap(void* base, std::size_t size);
int Protect(void* base, std::size_t size, int protection);
int Advise(void* base, std::size_t size, int advice);

}  // namespace k::system

#endif
