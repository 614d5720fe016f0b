// The geometry of a World: its row bytes, its size, its first pixel.
#ifndef WORLD_RECORD_GEOMETRY_H
#define WORLD_RECORD_GEOMETRY_H

#include <cstdint>

#include "PXL.h"
#include "platform/QDE.h"

struct PXLp_Geometry {
  std::uint64_t rowBytes = 0;   // from one row to the next
  std::uint64_t frameSize = 0;  // bytes of the whole frame
};

// Computes the geometry of a rectangle at a depth in bits. Rows are multiples
// of 16 bytes; up to 32 bits a pixel they have room for one spare pixel.
//
// Returns 0; PXL_Err_REFUSED, with both outputs 0, when a row would hold more
// than 32766 pixels (the spare one included) or fewer than 0;
// PXL_Err_NO_MEMORY when the size is negative (outputs not written) or above
// PXLp_kMaxFrameSize (outputs written). Failures are reported.
[[nodiscard]] std::int32_t PXLp_ComputeGeometry(const Rect& rect, std::int32_t depth,
                                                PXLp_Geometry* geometry);

// Returns the bytes from the start of a frame to the next 16-byte boundary,
// which is where the first pixel lies.
[[nodiscard]] std::uint64_t PXLp_ComputeAlignOffset(const void* frame);

// Returns the stride of a pixel map, without the flags in the same word.
[[nodiscard]] std::int32_t PXLp_ReadRowBytes(PixMapHandle map);

#endif
