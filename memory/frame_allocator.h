// Frames: the pixel memory of Worlds without drawing surface.
#ifndef MEMORY_FRAME_ALLOCATOR_H
#define MEMORY_FRAME_ALLOCATOR_H

#include <cstdint>

// The cores of PXL_AllocateFrameQuiet and PXL_FreeFrame. The module calls these
// two: the program around it can replace an exported function by its own.

// Returns 0, PXL_Err_NO_MEMORY with a null frame, or the purge loop's own code
// with a frame. Reports nothing.
[[nodiscard]] std::int32_t PXLp_AcquireFrame(std::uint64_t size, void** frame);

// `size` is the size that was requested: it decides where the frame came from.
void PXLp_ReleaseFrame(void* frame, std::uint64_t size);

#endif
