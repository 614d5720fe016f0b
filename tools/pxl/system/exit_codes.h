// The exit codes of the program.
#ifndef TOOLS_PXL_SYSTEM_EXIT_CODES_H
#define TOOLS_PXL_SYSTEM_EXIT_CODES_H

namespace pxl {

constexpr int kExitSuccess = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
// Those of a comparison, as of other programs that compare files.
constexpr int kExitSame = 0;
constexpr int kExitDifferent = 1;
constexpr int kExitNotCompared = 2;

}  // namespace pxl

#endif
