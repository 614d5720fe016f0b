// The geometry of a World: its row bytes, its size, its first pixel.
#ifndef WORLD_RECORD_GEOMETRY_H
#define WORLD_RECORD_GEOMETRY_H

#include <cstdint>

#include "PXL.h"
#include "platform/QDE.h"

// Bytes from one row to the next, and of the whole frame, for a rectangle at a
// depth in bits. Rows are multiples of 16 bytes; up to 32 bits a pixel they
// have room for one spare pixel. rowBytes may be null.
//
// Gives 0; PXL_Err_REFUSED, with both outputs 0, when a row would hold more
// than 32766 pixels (the spare one included) or fewer than 0;
// PXL_Err_NO_MEMORY when the size is negative (outputs not written) or above
// 0x7FFFFFFF bytes (outputs written). Failures are reported.
[[nodiscard]] std::int32_t PXLp_ComputeGeometry(std::int32_t depth, const Rect* rect,
                                                std::uint64_t* rowBytes, std::uint64_t* frameSize);

// Sets alignOffset so that the first pixel lies on a 16-byte boundary. Always
// gives 0.
std::int32_t PXLp_ComputeAlignOffset(PXL_PixelBuffer* pixels);

// The stride of a pixel map, without the flags that share its word. Always
// gives 0.
std::int32_t PXLp_GetPixMapRowBytes(PixMapHandle map, std::uint32_t* rowBytes);

#endif
