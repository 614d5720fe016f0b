// The depths that hold all channels of a picture.
#ifndef TOOLS_PXL_COMMANDS_DEPTHS_H
#define TOOLS_PXL_COMMANDS_DEPTHS_H

#include <array>
#include <cstdint>
#include <string>

#include "PXL.h"

namespace pxl {

struct DepthName {
  std::int32_t depth;
  const char* channels;
};

constexpr std::array<DepthName, 3> kDepths = {{{PXL_Depth_32, "8-bit integers"},
                                               {PXL_Depth_64, "16-bit integers"},
                                               {PXL_Depth_128, "floats"}}};

// "32 bits a pixel, 8-bit integers".
inline std::string NameOf(const DepthName& depth) {
  return std::to_string(depth.depth) + " bits a pixel, " + depth.channels;
}

}  // namespace pxl

#endif
