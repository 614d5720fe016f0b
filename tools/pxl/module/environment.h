// The environment variables of the tool, for tests and experiments:
//   PXL_SCRAMBLE=1        every handle moves whenever memory is allocated
//   PXL_MEMORY_BUDGET=N   K refuses memory beyond N bytes
//   PXL_FILL=HEX          the pattern of new Worlds, before pixels are written
//   PXL_FONT=FILE         the font of the labels (see label.h)
#ifndef TOOLS_PXL_MODULE_ENVIRONMENT_H
#define TOOLS_PXL_MODULE_ENVIRONMENT_H

#include <cstdint>

namespace pxl {

// Configures K by the variables. Throws UsageError for a value that is not a number.
void ApplyEnvironment();

// The pattern for PXL_ClearWorldToLong.
std::int32_t FillMarker();

}  // namespace pxl

#endif
