// Environment variables, and the folder for large temporary files.
#ifndef VETRIX_ENVIRONMENT_H
#define VETRIX_ENVIRONMENT_H

#include <string>

namespace vetrix {

// The value of a variable; empty when it is not set. UTF-8 on Windows, elsewhere
// the bytes as they are.
std::string Variable(const char* name);

// The system's folder for large temporary files, in UTF-8. Throws
// std::system_error when Windows knows none.
std::string FolderForLargeFiles();

}  // namespace vetrix

#endif
