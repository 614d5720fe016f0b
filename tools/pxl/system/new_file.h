#ifndef TOOLS_PXL_SYSTEM_NEW_FILE_H
#define TOOLS_PXL_SYSTEM_NEW_FILE_H

#include <filesystem>

namespace pxl {

// Creates an empty file if nothing has the name yet, and gives a descriptor for
// writing and reading; else, or when it cannot be, gives -1 with errno.
int CreateNewFile(const std::filesystem::path& path);

}  // namespace pxl

#endif
