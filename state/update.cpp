// PXL_UpdateWorld: new bounds, and a new depth for Worlds with a surface.
#include "memory/failure_report.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "state/resize_frame.h"
#include "state/surface_update.h"
#include "world/record/bounds.h"
#include "world/record/geometry.h"
#include "world/record/validity.h"

namespace {

// Only a live World that is not locked can be updated. A negative count counts
// as locked: some caller may still use the pixels.
std::int32_t CheckUpdatable(PXL_WorldHandle worldH) {
  const std::int32_t status = PXLp_CheckWorld(PXLp_Site::UpdateWorld, worldH);
  if (status != PXL_Err_NONE || RecordOf(worldH)->pixels.lockCount == 0) return status;
  PXLp_ReportMessage(PXLp_Site::UpdateWorld, PXLp_Message::LockedCannotRefresh);
  return PXL_Err_REFUSED;
}

void TakeOverSurface(GWorldPtr surface, const Rect& rect, PXL_WorldHandle worldH) {
  const GDHandle device = GetGWorldDevice(surface);
  const Rect bounds = PXLp_MoveToOrigin(rect);
  const PixMapHandle map = GetPortPixMap(surface);
  PXL_World& world = *RecordOf(worldH);
  world.gdevice = device;
  world.gworld = surface;
  world.bounds = bounds;
  world.width = bounds.right;
  world.height = bounds.bottom;
  // The surface may have another depth than the requested one.
  world.depth = RecordOf(map)->pixelSize;
  world.pixels.rowBytes = PXLp_ReadRowBytes(map);
}

// A failure leaves the World unchanged.
std::int32_t UpdateSurface(const Rect& rect, std::int32_t depth, std::int32_t surfaceArg,
                           PXL_WorldHandle worldH) {
  GWorldPtr surface = RecordOf(worldH)->gworld;
  auto* const device = reinterpret_cast<GDHandle>(static_cast<std::intptr_t>(surfaceArg));
  const std::int32_t status = PXLp_UpdatePlatformSurface(&surface, rect, depth, device);
  if (status != PXL_Err_NONE) {
    PXLp_ReportBufferError(PXLp_Site::UpdateWorld, status, {rect, depth});
    return status;
  }
  TakeOverSurface(surface, rect, worldH);
  return PXL_Err_NONE;
}

}  // namespace

std::int32_t PXL_UpdateWorld(std::int32_t newDepth, const Rect* newBounds, std::int32_t surfaceArg,
                             void* /*ignoredArg*/, PXL_WorldHandle worldH) {
  const std::int32_t status = CheckUpdatable(worldH);
  // Every update reads the tick count once, also a refused one: hosts may count
  // on the call.
  (void)TickCount();
  if (status != PXL_Err_NONE) return status;

  const PXL_World& world = *RecordOf(worldH);
  const Rect rect = newBounds != nullptr ? *newBounds : Rect{0, 0, world.height, world.width};
  const std::int32_t depth = newDepth != 0 ? newDepth : world.depth;
  return world.hasGWorld != 0 ? UpdateSurface(rect, depth, surfaceArg, worldH)
                              : PXLp_ResizeFrame(rect, depth, worldH);
}
