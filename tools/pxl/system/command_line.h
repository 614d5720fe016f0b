// What the system hands to the program and takes from it.
#ifndef TOOLS_PXL_SYSTEM_COMMAND_LINE_H
#define TOOLS_PXL_SYSTEM_COMMAND_LINE_H

#include <string>
#include <vector>

namespace pxl {

// The arguments of main in UTF-8, or as they are where the system knows no
// encoding of them.
std::vector<std::string> CommandLine(int count, const char* const* arguments);

// Makes the standard streams and a terminal behind them take UTF-8, lines that
// end in one character, and the sequences that move the cursor; and files that
// may grow no further fail.
void PrepareOutput();

}  // namespace pxl

#endif
