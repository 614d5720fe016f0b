// The debug settings that say which frames come from the recycled pool.
#ifndef MEMORY_FRAME_SETTINGS_H
#define MEMORY_FRAME_SETTINGS_H

#include <cstdint>

struct PXLp_FrameSettings {
  bool loaded = false;
  bool poolEnabled = true;
  std::int32_t poolThresholdKiB = 300;
};
extern PXLp_FrameSettings PXLp_frameSettings;

// Reads the settings on the first call of the process. What the core library
// throws passes out; the settings then stay as they are, for good.
void PXLp_LoadFrameSettings();

// Whether a frame of that many bytes comes from the pool: with the pool
// enabled, all that are strictly larger than the threshold. Uses the settings
// as they are at the moment.
[[nodiscard]] bool PXLp_IsPoolFrame(std::uint64_t size);

#endif
