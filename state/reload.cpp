#include "state/reload.h"

#include "memory/Memory.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"
#include "state/surface_update.h"
#include "world/record/geometry.h"

namespace {

// What a failed reload reports beside its error.
struct Extent {
  Rect rect;
  std::int32_t rowBytes;  // 0 when none were computed
};

// The surface has to stay where it is: the host may hold its address. If it
// moved, the World keeps the old one.
std::int32_t ReloadSurface(PXL_WorldHandle worldH, Extent* extent) {
  const PXL_World& world = *RecordOf(worldH);
  extent->rect = {0, 0, world.height, world.width};
  GWorldPtr surface = world.gworld;
  const std::int32_t status =
      PXLp_UpdatePlatformSurface(worldH, &surface, world.depth, &extent->rect, nullptr, nullptr);
  if (surface != RecordOf(worldH)->gworld) {
    PXLp_ReportMessage(PXLp_Site::ReloadPixels, PXLp_Message::StrangeChange);
    return PXL_Err_FAILED;
  }
  return status;
}

void FreeFrameOf(PXL_WorldHandle worldH) {
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  if (pixels.frame == nullptr) return;
  PXLp_FreeFrame(pixels.frame, pixels.frameSize);
  RecordOf(worldH)->pixels.frame = nullptr;
}

// Size, stride and alignment offset stay as they are stored: a reloaded frame
// has the geometry of the one before.
std::int32_t ReloadFrame(PXL_WorldHandle worldH, Extent* extent) {
  FreeFrameOf(worldH);
  extent->rect = RecordOf(worldH)->bounds;
  std::uint64_t rowBytes = 0;
  std::uint64_t frameSize = 0;
  std::int32_t status =
      PXLp_ComputeGeometry(RecordOf(worldH)->depth, &extent->rect, &rowBytes, &frameSize);
  extent->rowBytes = static_cast<std::int32_t>(rowBytes);
  if (status != PXL_Err_NONE) return status;
  void* frame = nullptr;
  status = PXLp_AllocateFrameQuiet(frameSize, 0, &frame);
  RecordOf(worldH)->pixels.frame = frame;
  return status;
}

}  // namespace

std::int32_t PXLp_ReloadPixels(PXL_WorldHandle worldH, std::uint8_t* loadedOut) {
  if (RecordOf(worldH)->pixels.lockCount != 0) {
    PXLp_ReportMessage(PXLp_Site::ReloadPixels, PXLp_Message::LockedCannotReallocate);
    return PXL_Err_REFUSED;
  }
  Extent extent{};
  const std::int32_t status = RecordOf(worldH)->hasGWorld != 0 ? ReloadSurface(worldH, &extent)
                                                               : ReloadFrame(worldH, &extent);
  if (status == PXL_Err_NONE) {
    if (loadedOut != nullptr) *loadedOut = 1;
    return PXL_Err_NONE;
  }
  // A caller that asks whether the pixels are there is told, not warned.
  if (loadedOut != nullptr && PXLp_IsMemoryError(status)) {
    *loadedOut = 0;
    return PXL_Err_NONE;
  }
  PXLp_ReportBufferError(PXLp_Site::ReloadPixels, status, extent.rowBytes, &extent.rect,
                         RecordOf(worldH)->depth, 0);
  return status;
}
