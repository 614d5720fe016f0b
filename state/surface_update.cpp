// The update of a drawing surface.
#include "state/surface_update.h"

#include "memory/failure_report.h"
#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"

namespace {

constexpr std::uint32_t kFailedBit = 0x80000000;

// An empty handle instead of the base address stands for purged pixels: the
// next lock finds it and reloads them.
void MakeSurfaceLookPurged(GWorldPtr surface) {
  const PixMapHandle map = GetPortPixMap(surface);
  if (RecordOf(map)->baseAddr != nullptr) return;
  const Handle empty = NewEmptyHandle();
  RecordOf(map)->baseAddr = reinterpret_cast<Ptr>(empty);
}

}  // namespace

std::int32_t PXLp_UpdatePlatformSurface(GWorldPtr* surface, const Rect& rect, std::int32_t depth,
                                        GDHandle device) {
  QDE_ForceBitmapCreationBitfields(1, 0, 0);
  const std::uint32_t result =
      UpdateGWorld(surface, static_cast<std::int16_t>(depth), &rect, nullptr, device, 0);
  QDE_ForceBitmapCreationBitfields(0, 0, 0);
  if ((result & kFailedBit) == 0) return PXL_Err_NONE;

  const auto error = static_cast<std::int32_t>(result);
  MakeSurfaceLookPurged(*surface);
  if (error == PXLp_kMemoryFull) K_PurgeHandlesAndCompact();
  return error;
}
