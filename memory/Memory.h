// Where pixels without a drawing surface live, and what the user is told when
// they cannot be had.
#ifndef MEMORY_MEMORY_H
#define MEMORY_MEMORY_H

#include <cstdint>

#include "PXL.h"
#include "state/messages/Messages.h"

// The cores of PXL_AllocateFrameQuiet and PXL_FreeFrame. The module calls
// these: an exported name could be taken over by the program around it.
std::int32_t PXLp_AllocateFrameQuiet(std::uint64_t size, std::uint64_t reserved, void** frame);
std::int32_t PXLp_FreeFrame(void* frame, std::uint64_t size);

// Makes a provider of `byteCount` bytes in a memory-mapped file and stores it
// in *slot. Gives 0 or PXL_Err_NO_MEMORY. After a failure the slot may hold a
// provider without file; its operations accept that, so it is released like
// any other.
std::int32_t PXLp_NewMappedProvider(std::uint64_t byteCount, PXL_PixelProvider** slot);

// The drawing layer's own code for lack of memory.
inline constexpr std::int32_t PXLp_MEMORY_FULL = -108;

// Whether an error says that memory is short, in the module's or in the drawing
// layer's numbering.
[[nodiscard]] constexpr bool PXLp_IsMemoryError(std::int32_t error) {
  return error == PXL_Err_NO_MEMORY || error == PXLp_MEMORY_FULL;
}

// Reports that pixels could not be had. PXL_Err_NO_MEMORY and -108 give one of
// the two memory messages, 0 nothing, any other error the message "changing
// pixel buffer." with the system's wording. rowBytes is 0 when unknown, and
// byteCount 0 when it is to be computed.
void PXLp_ReportBufferError(PXLp_Site site, std::int32_t error, std::int32_t rowBytes,
                            const Rect* bounds, std::int32_t depth, std::uint64_t byteCount);

#endif
