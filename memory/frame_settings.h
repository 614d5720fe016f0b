// The debug settings that decide which frames come from the recycled pool.
#ifndef MEMORY_FRAME_SETTINGS_H
#define MEMORY_FRAME_SETTINGS_H

#include <cstdint>

// Reads the settings on the first call of the process. Exceptions of the core
// library pass out; the settings then keep their present values, since no later
// call reads them again.
void PXLp_LoadFrameSettings();

// Whether a frame of that many bytes comes from the pool: if the pool is
// enabled, every frame strictly larger than the threshold. Uses the present
// values, loaded or not.
[[nodiscard]] bool PXLp_IsPoolFrame(std::uint64_t size);

#endif
