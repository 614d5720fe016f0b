#include "state/resize_frame.h"

#include "memory/Memory.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"
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
  const Rect* rect;
  std::int32_t depth;
  std::uint64_t rowBytes;
  std::uint64_t size;
};

// A code from the allocator is an error even when a block came with it.
std::int32_t RequestFrame(const NewFrame& wanted, void** block) {
  const std::int32_t status = PXLp_AllocateFrameQuiet(wanted.size, 0, block);
  if (*block == nullptr) {
    PXLp_ReportBufferError(PXLp_Site::ResizeFrame, PXL_Err_NO_MEMORY,
                           static_cast<std::int32_t>(wanted.rowBytes), wanted.rect, wanted.depth,
                           0);
  }
  return status;
}

// The new frame or, with an error, one of the old size, or none.
std::int32_t ReplaceFrame(const NewFrame& wanted, PXL_WorldHandle worldH) {
  const std::uint64_t oldSize = RecordOf(worldH)->pixels.frameSize;
  PXLp_FreeFrame(RecordOf(worldH)->pixels.frame, oldSize);
  RecordOf(worldH)->pixels.frame = nullptr;

  void* block = nullptr;
  const std::int32_t status = RequestFrame(wanted, &block);
  if (status != PXL_Err_NONE && PXLp_AllocateFrameQuiet(oldSize, 0, &block) != PXL_Err_NONE) {
    MarkPixelsLost(worldH);
  }
  // The new size is stored beside an old block too: hosts and the later free
  // go by it.
  RecordOf(worldH)->pixels.frame = block;
  RecordOf(worldH)->pixels.frameSize = wanted.size;
  return status;
}

}  // namespace

std::int32_t PXLp_ResizeFrame(std::int32_t depth, const Rect* rect, PXL_WorldHandle worldH) {
  if (RecordOf(worldH)->pixels.frame == nullptr) return PXL_Err_NONE;
  if (depth != RecordOf(worldH)->depth) {
    PXLp_ReportMessage(PXLp_Site::ResizeFrame, PXLp_Message::CannotChangeDepth);
    return PXL_Err_REFUSED;
  }
  if (HasSize(*RecordOf(worldH), *rect)) return PXL_Err_NONE;

  NewFrame wanted{rect, depth, 0, 0};
  std::int32_t status = PXLp_ComputeGeometry(depth, rect, &wanted.rowBytes, &wanted.size);
  if (status != PXL_Err_NONE) return status;
  status = ReplaceFrame(wanted, worldH);
  if (status != PXL_Err_NONE) return status;
  return PXLp_SetWorldGeometry(rect, static_cast<std::uint32_t>(wanted.rowBytes),
                               static_cast<std::int16_t>(depth), worldH);
}

std::int32_t PXLp_SetWorldGeometry(const Rect* rect, std::uint32_t rowBytes, std::int16_t depth,
                                   PXL_WorldHandle worldH) {
  const Rect bounds = PXLp_MovedToOrigin(*rect);
  PXL_World& world = *RecordOf(worldH);
  world.bounds = bounds;
  world.width = bounds.right;
  world.height = bounds.bottom;
  world.pixels.rowBytes = static_cast<std::int32_t>(rowBytes);
  world.depth = depth;
  return PXLp_ComputeAlignOffset(&world.pixels);
}
