// What the user sees on standard output and standard error.
#ifndef TOOLS_PXL_SYSTEM_CONSOLE_H
#define TOOLS_PXL_SYSTEM_CONSOLE_H

#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {

// The text as one line that a terminal shows and does not obey: control
// characters become blanks.
std::string OneLine(const std::string& text);

// "pxl: NAME: REASON" on standard error; the name may be empty.
void TellFailure(const std::string& name, const std::string& reason);
// "pxl: NAME: note: TEXT" on standard error.
void TellNote(const std::string& name, const std::string& text);

// Hands on what was printed. Throws Failure when standard output took less.
void FinishOutput();

}  // namespace pxl

#endif
