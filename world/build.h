// Building the contents of a new World.
#ifndef WORLD_BUILD_H
#define WORLD_BUILD_H

#include <cstdint>

#include "PXL.h"

// The arguments of PXL_NewWorld that describe the World.
struct PXLp_WorldRequest {
  PXL_WorldHandle parentH;  // null: no parent
  std::uint32_t flags;
  const Rect* rect;    // null: the parent's size
  std::int32_t depth;  // a depth code; PXL_Depth_SHARE: the parent's depth
};

// Fills a locked, zero-filled record: depth, bounds and pixels, but not the
// marks. Returns 0 or the status of the step that failed; the record then holds
// the results of the steps before it.
[[nodiscard]] std::int32_t PXLp_BuildWorld(const PXLp_WorldRequest& request,
                                           PXL_WorldHandle worldH);

#endif
