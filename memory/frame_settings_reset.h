// The values of the frame settings, for tests alone.
#ifndef MEMORY_FRAME_SETTINGS_RESET_H
#define MEMORY_FRAME_SETTINGS_RESET_H

#include <cstdint>

struct PXLp_FrameSettings {
  bool loaded = false;
  bool poolEnabled = true;
  std::int32_t poolThresholdKiB = 300;
};

// The present values of the process.
[[nodiscard]] PXLp_FrameSettings& PXLp_AccessFrameSettings();

#endif
