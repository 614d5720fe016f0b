// The new frame of a re-sized World, and the fallback to the old size.
#include "state/resize_frame.h"

#include "memory/failure_report.h"
#include "memory/frame_allocator.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "world/record/bounds.h"
#include "world/record/geometry.h"

namespace {

bool HasSize(const PXL_World& world, const Rect& rect) {
  return world.width == rect.right - rect.left && world.height == rect.bottom - rect.top;
}

// Two beeps and a flag: the World has lost its pixels.
void MarkPixelsLost(PXL_WorldHandle worldH) {
  RecordOf(worldH)->flags |= PXL_Flag_PURGEABLE;
  K_Beep();
  K_Beep();
}

struct NewFrame {
  PXLp_PixelExtent extent;
  std::uint64_t size = 0;
};

// An error of the allocator counts even when it comes with a block.
std::int32_t RequestFrame(const NewFrame& wanted, void** block) {
  const std::int32_t status = PXLp_AcquireFrame(wanted.size, block);
  if (*block == nullptr) {
    PXLp_ReportBufferError(PXLp_Site::ResizeFrame, PXL_Err_NO_MEMORY, wanted.extent);
  }
  return status;
}

// Returns 0 with the new frame, or an error with a frame of the old size or
// none.
std::int32_t ReplaceFrame(const NewFrame& wanted, PXL_WorldHandle worldH) {
  const std::uint64_t oldSize = RecordOf(worldH)->pixels.frameSize;
  PXLp_ReleaseFrame(RecordOf(worldH)->pixels.frame, oldSize);
  RecordOf(worldH)->pixels.frame = nullptr;

  void* block = nullptr;
  const std::int32_t status = RequestFrame(wanted, &block);
  if (status != PXL_Err_NONE && PXLp_AcquireFrame(oldSize, &block) != PXL_Err_NONE) {
    MarkPixelsLost(worldH);
  }
  // The new size is stored even with a block of the old size: hosts read it, and
  // the block is released with it.
  RecordOf(worldH)->pixels.frame = block;
  RecordOf(worldH)->pixels.frameSize = wanted.size;
  return status;
}

}  // namespace

std::int32_t PXLp_ResizeFrame(const Rect& rect, std::int32_t depth, PXL_WorldHandle worldH) {
  if (RecordOf(worldH)->pixels.frame == nullptr) return PXL_Err_NONE;
  if (depth != RecordOf(worldH)->depth) {
    PXLp_ReportMessage(PXLp_Site::ResizeFrame, PXLp_Message::CannotChangeDepth);
    return PXL_Err_REFUSED;
  }
  if (HasSize(*RecordOf(worldH), rect)) return PXL_Err_NONE;

  PXLp_Geometry geometry;
  std::int32_t status = PXLp_ComputeGeometry(rect, depth, &geometry);
  if (status != PXL_Err_NONE) return status;
  const PXLp_PixelExtent extent = {rect, depth, static_cast<std::int32_t>(geometry.rowBytes)};
  status = ReplaceFrame({extent, geometry.frameSize}, worldH);
  if (status == PXL_Err_NONE) PXLp_SetWorldGeometry(extent, worldH);
  return status;
}

void PXLp_SetWorldGeometry(const PXLp_PixelExtent& extent, PXL_WorldHandle worldH) {
  const Rect bounds = PXLp_MoveToOrigin(extent.rect);
  PXL_World& world = *RecordOf(worldH);
  world.bounds = bounds;
  world.width = bounds.right;
  world.height = bounds.bottom;
  world.depth = static_cast<std::int16_t>(extent.depth);
  world.pixels.rowBytes = extent.rowBytes;
  world.pixels.alignOffset = PXLp_ComputeAlignOffset(world.pixels.frame);
}
