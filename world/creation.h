// The steps of making and releasing a World.
#ifndef WORLD_CREATION_H
#define WORLD_CREATION_H

#include <cstdint>

#include "PXL.h"

// Fills a locked, zero-filled record: depth, bounds and pixels, but not the
// marks. Depth and rectangle come from the parent where they are not given.
// `reserved` is ignored. Gives 0 or the status of what failed; the record then
// holds what was done so far.
[[nodiscard]] std::int32_t PXLp_BuildWorld(PXL_WorldHandle parentH, std::uint32_t flags,
                                           std::int32_t depth, std::uint32_t reserved,
                                           const Rect* rect, PXL_WorldHandle worldH);

// Two of the ways in which a World gets its pixels. Both give 0 or the status
// of what failed, which they have reported.
[[nodiscard]] std::int32_t PXLp_NewWorldNoPlatformBacking(const Rect* rect, std::int32_t depth,
                                                          PXL_WorldHandle worldH);
[[nodiscard]] std::int32_t PXLp_NewWorldPlatformBacking(const Rect* rect, std::int32_t depth,
                                                        PXL_WorldHandle worldH);

// Releases pixels, surface, marks and handle, whatever state they are in. A
// null handle is accepted. Gives the status of releasing the pixels; the rest
// is done even when that failed.
std::int32_t PXLp_ReleaseWorld(PXL_WorldHandle worldH);
std::int32_t PXLp_ReleasePixels(PXL_PixelBuffer* pixels);

#endif
