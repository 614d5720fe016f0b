// What K asks of a POSIX system for its pages, and nothing else: tests put their
// own in its place and let it fail. Each call is the system's own, errno
// included.
#ifndef K_SYSTEM_CALLS_POSIX_H
#define K_SYSTEM_CALLS_POSIX_H

#include <cstddef>

namespace k::system {

// Private and zero-filled, to be read and written.
void* Map(std::size_t size);
int Unmap(void* base, std::size_t size);
int Protect(void* base, std::size_t size, int protection);
int Advise(void* base, std::size_t size, int advice);

}  // namespace k::system

#endif
