// All calls of mapped files to a POSIX system. Tests replace them by calls that
// fail. Results and errno are those of the system.
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
// Returns the error number, and does not set errno.
int Allocate(int descriptor, off_t size);
int Truncate(int descriptor, off_t size);
int Close(int descriptor);
// Maps the file, shared, for reading and writing.
void* Map(int descriptor, std::size_t size);
int Unmap(void* view, std::size_t size);

}  // namespace vetrix::system

#endif
