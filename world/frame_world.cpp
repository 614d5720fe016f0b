// Worlds whose pixels are a frame of module memory.
#include "world/frame_world.h"

#include "memory/failure_report.h"
#include "memory/frame_allocator.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "world/record/geometry.h"

namespace {

bool IsFrameDepth(std::int32_t depth) {
  return depth == PXL_Depth_32 || depth == PXL_Depth_64 || depth == PXL_Depth_128;
}

}  // namespace

std::int32_t PXLp_NewWorldNoPlatformBacking(const Rect& rect, std::int32_t depth,
                                            PXL_WorldHandle worldH) {
  if (!IsFrameDepth(depth)) {
    return PXLp_FailVerification(
        PXLp_MakeReportCode(PXLp_Site::FrameWorldDepth), 72,
        "PXLp_NewWorldNoPlatformBacking() only allowed on 32, 64 and 128bpp worlds");
  }
  PXLp_Geometry geometry;
  std::int32_t status = PXLp_ComputeGeometry(rect, depth, &geometry);
  if (status != PXL_Err_NONE) return status;

  const auto rowBytes = static_cast<std::int32_t>(geometry.rowBytes);
  void* frame = nullptr;
  status = PXLp_AcquireFrame(geometry.frameSize, &frame);
  // The frame decides, not the status: the purge loop may return a code of its
  // own although an attempt has allocated the frame.
  if (frame == nullptr) {
    PXLp_ReportBufferError(PXLp_Site::FrameWorld, status, {rect, depth, rowBytes});
    return status;
  }

  PXL_World& world = *RecordOf(worldH);
  world.pixels.frame = frame;
  world.pixels.frameSize = geometry.frameSize;
  world.pixels.rowBytes = rowBytes;
  world.pixels.alignOffset = PXLp_ComputeAlignOffset(frame);
  world.hasFrame = 1;
  world.depth = static_cast<std::int16_t>(depth);
  return PXL_Err_NONE;
}
