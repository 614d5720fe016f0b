#include "memory/Memory.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"
#include "world/creation.h"
#include "world/record/geometry.h"

namespace {

bool IsFrameDepth(std::int32_t depth) {
  return depth == PXL_Depth_32 || depth == PXL_Depth_64 || depth == PXL_Depth_128;
}

}  // namespace

std::int32_t PXLp_NewWorldNoPlatformBacking(const Rect* rect, std::int32_t depth,
                                            PXL_WorldHandle worldH) {
  if (!IsFrameDepth(depth)) {
    return PXLp_FailVerification(
        PXLp_ReportCode(PXLp_Site::FrameWorldDepth), 72,
        "PXLp_NewWorldNoPlatformBacking() only allowed on 32, 64 and 128bpp worlds");
  }
  std::uint64_t rowBytes = 0;
  std::uint64_t frameSize = 0;
  std::int32_t status = PXLp_ComputeGeometry(depth, rect, &rowBytes, &frameSize);
  if (status != PXL_Err_NONE) return status;

  const bool clear = (RecordOf(worldH)->flags & PXL_Flag_CLEAR) != 0;
  void* frame = nullptr;
  status = PXLp_AllocateFrameQuiet(frameSize, clear ? 1 : 0, &frame);
  // The frame decides, not the status: one may come with the other.
  if (frame == nullptr) {
    PXLp_ReportBufferError(PXLp_Site::FrameWorld, status, static_cast<std::int32_t>(rowBytes), rect,
                           depth, 0);
    return status;
  }

  PXL_World& world = *RecordOf(worldH);
  world.pixels.frame = frame;
  world.pixels.frameSize = frameSize;
  world.pixels.rowBytes = static_cast<std::int32_t>(rowBytes);
  world.hasFrame = 1;
  world.depth = static_cast<std::int16_t>(depth);
  return PXLp_ComputeAlignOffset(&world.pixels);
}
