// pxl selftest: the routines of every processor level compared with the plain loops.
#ifndef TOOLS_PXL_COMMANDS_SELFTEST_SELFTEST_COMMAND_H
#define TOOLS_PXL_COMMANDS_SELFTEST_SELFTEST_COMMAND_H

namespace pxl {

struct SelftestOptions {
  bool quick = false;  // without all floats
};

// Prints a line for each level of processor and one for the library's blit.
// Returns kExitFailure if any of them differs.
int Selftest(const SelftestOptions& options);

}  // namespace pxl

#endif
