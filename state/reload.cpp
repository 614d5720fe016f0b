// Re-creation of the pixels of surfaces and of frames.
#include "state/reload.h"

#include "memory/failure_report.h"
#include "memory/frame_allocator.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "state/surface_update.h"
#include "world/record/geometry.h"

namespace {

// Both functions store the extent, for the report of a failure.

// The surface has to stay where it is: the host may hold its address. If it
// moved, the World keeps the old one.
std::int32_t ReloadSurface(PXL_WorldHandle worldH, PXLp_PixelExtent* extent) {
  const PXL_World& world = *RecordOf(worldH);
  *extent = {{0, 0, world.height, world.width}, world.depth};
  GWorldPtr surface = world.gworld;
  const std::int32_t status =
      PXLp_UpdatePlatformSurface(&surface, extent->rect, extent->depth, nullptr);
  if (surface != RecordOf(worldH)->gworld) {
    PXLp_ReportMessage(PXLp_Site::ReloadPixels, PXLp_Message::StrangeChange);
    return PXL_Err_FAILED;
  }
  return status;
}

void ReleaseFrameOf(PXL_WorldHandle worldH) {
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  if (pixels.frame == nullptr) return;
  PXLp_ReleaseFrame(pixels.frame, pixels.frameSize);
  RecordOf(worldH)->pixels.frame = nullptr;
}

// Size, stride and alignment offset keep their stored values: a reloaded frame
// has the geometry of the one before.
std::int32_t ReloadFrame(PXL_WorldHandle worldH, PXLp_PixelExtent* extent) {
  ReleaseFrameOf(worldH);
  *extent = {RecordOf(worldH)->bounds, RecordOf(worldH)->depth};
  PXLp_Geometry geometry;
  std::int32_t status = PXLp_ComputeGeometry(extent->rect, extent->depth, &geometry);
  extent->rowBytes = static_cast<std::int32_t>(geometry.rowBytes);
  if (status != PXL_Err_NONE) return status;
  void* frame = nullptr;
  status = PXLp_AcquireFrame(geometry.frameSize, &frame);
  RecordOf(worldH)->pixels.frame = frame;
  return status;
}

}  // namespace

std::int32_t PXLp_ReloadPixels(PXL_WorldHandle worldH, std::uint8_t* loadedOut) {
  if (RecordOf(worldH)->pixels.lockCount != 0) {
    PXLp_ReportMessage(PXLp_Site::ReloadPixels, PXLp_Message::LockedCannotReallocate);
    return PXL_Err_REFUSED;
  }
  PXLp_PixelExtent extent{};
  const std::int32_t status = RecordOf(worldH)->hasGWorld != 0 ? ReloadSurface(worldH, &extent)
                                                               : ReloadFrame(worldH, &extent);
  if (status == PXL_Err_NONE) {
    if (loadedOut != nullptr) *loadedOut = 1;
    return PXL_Err_NONE;
  }
  // A caller that passes loadedOut learns of a lack of memory from it alone,
  // without a report.
  if (loadedOut != nullptr && PXLp_IsMemoryError(status)) {
    *loadedOut = 0;
    return PXL_Err_NONE;
  }
  PXLp_ReportBufferError(PXLp_Site::ReloadPixels, status, extent);
  return status;
}
