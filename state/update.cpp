#include "memory/Memory.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"
#include "state/resize_frame.h"
#include "state/surface_update.h"
#include "world/record/bounds.h"
#include "world/record/geometry.h"
#include "world/record/validity.h"

namespace {

// Only a live World that is not locked can be updated. A count below zero
// counts as locked: nobody knows who holds the pixels.
std::int32_t CheckUpdatable(PXL_WorldHandle worldH) {
  const std::int32_t status = PXLp_CheckWorld(PXLp_Site::UpdateWorld, worldH);
  if (status != PXL_Err_NONE || RecordOf(worldH)->pixels.lockCount == 0) return status;
  PXLp_ReportMessage(PXLp_Site::UpdateWorld, PXLp_Message::LockedCannotRefresh);
  return PXL_Err_REFUSED;
}

void TakeOverSurface(GWorldPtr surface, const Rect& rect, PXL_WorldHandle worldH) {
  const GDHandle device = GetGWorldDevice(surface);
  const Rect bounds = PXLp_MovedToOrigin(rect);
  const PixMapHandle map = GetPortPixMap(surface);
  std::uint32_t rowBytes = 0;
  PXLp_GetPixMapRowBytes(map, &rowBytes);
  PXL_World& world = *RecordOf(worldH);
  world.gdevice = device;
  world.gworld = surface;
  world.bounds = bounds;
  world.width = bounds.right;
  world.height = bounds.bottom;
  // The layer may have chosen another depth than the one asked for.
  world.depth = RecordOf(map)->pixelSize;
  world.pixels.rowBytes = static_cast<std::int32_t>(rowBytes);
}

// After a failure the World is as it was.
std::int32_t UpdateSurface(std::int32_t depth, const Rect& rect, std::int32_t surfaceArg,
                           PXL_WorldHandle worldH) {
  GWorldPtr surface = RecordOf(worldH)->gworld;
  auto* device = reinterpret_cast<void*>(static_cast<std::intptr_t>(surfaceArg));
  const std::int32_t status =
      PXLp_UpdatePlatformSurface(worldH, &surface, depth, &rect, device, nullptr);
  if (status != PXL_Err_NONE) {
    PXLp_ReportBufferError(PXLp_Site::UpdateWorld, status, 0, &rect, depth, 0);
    return status;
  }
  TakeOverSurface(surface, rect, worldH);
  return PXL_Err_NONE;
}

}  // namespace

std::int32_t PXL_UpdateWorld(std::int32_t newDepth, const Rect* newBounds, std::int32_t surfaceArg,
                             void* /*ignoredArg*/, PXL_WorldHandle worldH) {
  const std::int32_t status = CheckUpdatable(worldH);
  // Hosts see one tick read in every update, refused ones included.
  (void)TickCount();
  if (status != PXL_Err_NONE) return status;

  const PXL_World& world = *RecordOf(worldH);
  const Rect rect = newBounds != nullptr ? *newBounds : Rect{0, 0, world.height, world.width};
  const std::int32_t depth = newDepth != 0 ? newDepth : world.depth;
  return world.hasGWorld != 0 ? UpdateSurface(depth, rect, surfaceArg, worldH)
                              : PXLp_ResizeFrame(depth, &rect, worldH);
}
