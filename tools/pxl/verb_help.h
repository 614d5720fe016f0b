// The texts at the end of each help page.
#ifndef TOOLS_PXL_VERB_HELP_H
#define TOOLS_PXL_VERB_HELP_H

#include <string>

namespace pxl {

// Exit codes and environment, for the program and for verbs without a text of
// their own.
std::string CommonHelp();

// The description of a verb, followed by exit codes and environment.
std::string ConvertHelp();
std::string DemoHelp();
std::string DiffHelp();
std::string DoctorHelp();
std::string ModesHelp();
std::string SelftestHelp();
std::string SheetHelp();
std::string SoakHelp();

}  // namespace pxl

#endif
