// The environment variables of the tool. They serve tests and the curious:
//   PXL_SCRAMBLE=1        every handle moves whenever memory is allocated
//   PXL_MEMORY_BUDGET=N   K refuses memory beyond N bytes
//   PXL_FILL=HEX          what Worlds are filled with before pixels come in
//   PXL_FONT=FILE         the font of the labels (see label.h)
#ifndef TOOLS_PXL_MODULE_ENVIRONMENT_H
#define TOOLS_PXL_MODULE_ENVIRONMENT_H

#include <cstdint>

namespace pxl {

// Sets up K as the variables ask for. Throws UsageError for one that makes no
// sense.
void ApplyEnvironment();

// The pattern for PXL_ClearWorldToLong.
std::int32_t FillMarker();

}  // namespace pxl

#endif
