// The files behind mapped memory, on POSIX systems.
#ifndef VETRIX_BACKING_FILE_POSIX_H
#define VETRIX_BACKING_FILE_POSIX_H

#include <cstdint>
#include <string>

namespace vetrix {

// All give a descriptor that the caller closes, for an empty file that only
// this user can reach and that has no name, so that it is gone at the latest
// with the process. They throw std::system_error.
int OpenBackingFile(const std::string& directory);
// The two ways of it. The first leaves no moment in which a name exists, but
// not every file system has it. In the second a name that cannot be taken away
// stays, with an empty file, and is told in the message.
int OpenUnnamedFile(const std::string& directory);
int OpenAndUnlinkFile(const std::string& directory);

// Gives the file `size` bytes of zeros and reserves the disk's space for them.
// Throws std::system_error; a limit on file sizes is tested first, since the
// system would answer it with a signal.
void ReserveSpace(int descriptor, std::uint64_t size);

}  // namespace vetrix

#endif
