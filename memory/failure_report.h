// Reports of pixel memory that could not be allocated.
#ifndef MEMORY_FAILURE_REPORT_H
#define MEMORY_FAILURE_REPORT_H

#include <cstdint>

#include "PXL.h"
#include "memory/pixel_extent.h"
#include "state/messages/reports.h"

// The drawing layer's own code for lack of memory.
inline constexpr std::int32_t PXLp_kMemoryFull = -108;

// Whether an error means lack of memory, in the module's or in the drawing
// layer's numbering.
[[nodiscard]] constexpr bool PXLp_IsMemoryError(std::int32_t error) {
  return error == PXL_Err_NO_MEMORY || error == PXLp_kMemoryFull;
}

// Reports an error of allocating pixels: a memory error with one of the two
// memory messages, any other with the message "changing pixel buffer." and the
// system's wording; 0 is not reported. A byteCount of 0 is computed from the
// extent.
void PXLp_ReportBufferError(PXLp_Site site, std::int32_t error, const PXLp_PixelExtent& extent,
                            std::uint64_t byteCount = 0);

// Reports that byteCount bytes for an image could not be allocated. Returns 0,
// or the code of an exception that prevented the report.
std::int32_t PXLp_ReportMemoryMessage(PXLp_Site site, const PXLp_PixelExtent& extent,
                                      std::uint64_t byteCount);

#endif
