// What mapped files ask of a POSIX system, and nothing else: tests put their own
// in its place and let it fail. Each call is the system's own, errno included.
#ifndef VETRIX_SYSTEM_CALLS_POSIX_H
#define VETRIX_SYSTEM_CALLS_POSIX_H

#include <sys/resource.h>
#include <sys/types.h>

#include <cstddef>

namespace vetrix::system {

int GetFileSizeLimit(rlimit* limit);
int Open(const char* path, int flags, mode_t mode);
int MakeTemporary(char* path, int flags);
int Unlink(const char* path);
// Gives the error.
int Allocate(int descriptor, off_t size);
int Truncate(int descriptor, off_t size);
int Close(int descriptor);
// Shared, to be read and written.
void* Map(int descriptor, std::size_t size);
int Unmap(void* view, std::size_t size);

}  // namespace vetrix::system

#endif
