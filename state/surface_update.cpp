#include "state/surface_update.h"

#include "memory/Memory.h"
#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"

namespace {

constexpr std::uint32_t FAILED_BIT = 0x80000000;

// An empty handle in the place of the base address stands for purged pixels,
// which the next lock finds and reloads.
void MakeSurfaceLookPurged(GWorldPtr surface) {
  const PixMapHandle map = GetPortPixMap(surface);
  if (RecordOf(map)->baseAddr != nullptr) return;
  const Handle empty = NewEmptyHandle();
  RecordOf(map)->baseAddr = reinterpret_cast<Ptr>(empty);
}

}  // namespace

std::int32_t PXLp_UpdatePlatformSurface(PXL_WorldHandle /*worldH*/, GWorldPtr* surface,
                                        std::int32_t depth, const Rect* rect, void* device,
                                        void* /*ignored*/) {
  QDE_ForceBitmapCreationBitfields(1, 0, 0);
  const std::uint32_t result = UpdateGWorld(surface, static_cast<std::int16_t>(depth), rect,
                                            nullptr, static_cast<GDHandle>(device), 0);
  QDE_ForceBitmapCreationBitfields(0, 0, 0);
  if ((result & FAILED_BIT) == 0) return PXL_Err_NONE;

  const auto error = static_cast<std::int32_t>(result);
  MakeSurfaceLookPurged(*surface);
  if (error == PXLp_MEMORY_FULL) K_PurgeHandlesAndCompact();
  return error;
}
