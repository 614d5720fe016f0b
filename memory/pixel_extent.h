// The extent of an image, and the largest frame that may hold one.
#ifndef MEMORY_PIXEL_EXTENT_H
#define MEMORY_PIXEL_EXTENT_H

#include <cstdint>

#include "PXL.h"

struct PXLp_PixelExtent {
  Rect rect = {};
  std::int32_t depth = 0;     // bits per pixel
  std::int32_t rowBytes = 0;  // 0: not known
};

// In bytes.
inline constexpr std::uint64_t PXLp_kMaxFrameSize = 0x7FFFFFFF;

#endif
