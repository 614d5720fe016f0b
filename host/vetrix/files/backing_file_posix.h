// Makes the files behind mapped memory on POSIX systems.
#ifndef VETRIX_BACKING_FILE_POSIX_H
#define VETRIX_BACKING_FILE_POSIX_H

#include <cstdint>
#include <string>

namespace vetrix {

// All return the descriptor, which the caller closes, of an empty file without a
// name that only this user can access, so that the system deletes it at the latest
// when the process ends. They throw std::system_error.
int OpenBackingFile(const std::string& directory);
// The two ways that OpenBackingFile tries. The first never makes a name, but not
// every file system supports it. The second makes a name and removes it; if that
// fails, an empty file with the name remains, and the exception names it.
int OpenUnnamedFile(const std::string& directory);
int OpenAndUnlinkFile(const std::string& directory);

// Extends the file to `size` bytes of zeros and reserves space for them on the
// volume. Throws std::system_error. The limit on file sizes is checked first, since
// the system would raise a signal.
void ReserveSpace(int descriptor, std::uint64_t size);

}  // namespace vetrix

#endif
