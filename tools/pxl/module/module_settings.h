// The settings of the module, parsed as the module parses them.
#ifndef TOOLS_PXL_MODULE_MODULE_SETTINGS_H
#define TOOLS_PXL_MODULE_MODULE_SETTINGS_H

#include <cstdint>

namespace pxl {

inline constexpr const char* kPoolKey = "VirtualAllocFrames";
inline constexpr const char* kThresholdKey = "VirtualAllocMinSizeInK3";

// Whether large frames come from the pool.
bool PoolEnabled();

// Frames of more KiB than this are large.
std::int32_t PoolThreshold();

}  // namespace pxl

#endif
