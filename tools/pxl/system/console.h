// Messages on standard error, and the end of standard output.
#ifndef TOOLS_PXL_SYSTEM_CONSOLE_H
#define TOOLS_PXL_SYSTEM_CONSOLE_H

#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {

// The text as one line without effects on a terminal: control characters become
// blanks.
std::string OneLine(const std::string& text);

// Prints "pxl: NAME: REASON" on standard error; the name may be empty.
void PrintFailure(const std::string& name, const std::string& reason);
// Prints "pxl: NAME: note: TEXT" on standard error.
void PrintNote(const std::string& name, const std::string& text);

// Flushes standard output. Throws Failure when it did not accept everything.
void FinishOutput();

}  // namespace pxl

#endif
