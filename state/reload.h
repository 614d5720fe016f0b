// Re-creating purged pixels.
#ifndef STATE_RELOAD_H
#define STATE_RELOAD_H

#include <cstdint>

#include "PXL.h"

// Re-creates the pixels of an unlocked World; their content is undefined.
// Returns 0 with *loadedOut 1; 0 with *loadedOut 0 when memory was short; or,
// with *loadedOut unchanged, an error that has been reported. When loadedOut is
// null, lack of memory is such an error too.
[[nodiscard]] std::int32_t PXLp_ReloadPixels(PXL_WorldHandle worldH, std::uint8_t* loadedOut);

#endif
