// Files by their names in UTF-8.
#ifndef K_OPEN_FILE_H
#define K_OPEN_FILE_H

#include <cstdio>
#include <string>

namespace k {

// Opens the file for reading its bytes; null, with errno, when it cannot be.
std::FILE* OpenFile(const std::string& path);

}  // namespace k

#endif
