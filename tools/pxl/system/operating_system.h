// Calls of the operating system that differ between Windows and others: arguments,
// standard streams, new files.
#ifndef TOOLS_PXL_SYSTEM_OPERATING_SYSTEM_H
#define TOOLS_PXL_SYSTEM_OPERATING_SYSTEM_H

#include <filesystem>
#include <string>
#include <vector>

namespace pxl {

// The arguments of main in UTF-8; unchanged where the system does not define
// their encoding.
std::vector<std::string> CommandLine(int count, const char* const* arguments);

// Makes the standard streams and a terminal behind them accept UTF-8, lines that
// end in one character, and the sequences that move the cursor. A write beyond
// the limit for files then fails instead of ending the program.
void PrepareOutput();

// Whether standard error is a terminal.
bool StandardErrorIsTerminal();

// Creates an empty file unless one of that name exists. Returns a descriptor for
// writing and reading, or -1 with errno.
int CreateNewFile(const std::filesystem::path& path);

}  // namespace pxl

#endif
