// A host that renders frame after frame makes and disposes of Worlds of one
// size again and again.
#ifndef TESTS_INTEGRATION_STEADY_H
#define TESTS_INTEGRATION_STEADY_H

#include "tests/support/host/whole.h"

inline constexpr int kRounds = 40;

// Touches every page of the frame.
inline bool MakeAndDispose() {
  const Rect rect{0, 0, 1080, 1920};
  PXL_WorldHandle worldH = nullptr;
  if (PXL_NewWorld(nullptr, PXL_Flag_CLEAR, &rect, 128, 0, nullptr, &worldH) != PXL_Err_NONE)
    return false;
  bool good = PXL_LockPixels(0, worldH, nullptr) == PXL_Err_NONE;
  PXL_UnlockPixels(worldH);
  good = good && K_IsRecycledPtr(Record(worldH).pixels.frame) != 0;
  return PXL_DisposeWorld(worldH) == PXL_Err_NONE && good;
}

inline bool MakeAndDisposeOften() {
  for (int round = 0; round < kRounds; ++round) {
    if (!MakeAndDispose()) return false;
  }
  return true;
}

// With the host's own settings: nothing is moved on purpose.
class SteadyWorlds : public Whole {
 protected:
  SteadyWorlds() {
    K_SetScramble(0);
    K_SetPoolLimit(0);
    K_SetPoolLimit(K_DefaultPoolLimit);
  }
  ~SteadyWorlds() override { K_SetPoolLimit(K_DefaultPoolLimit); }
};

#endif
