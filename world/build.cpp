#include "memory/Memory.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/Messages.h"
#include "world/creation.h"
#include "world/record/geometry.h"

namespace {

// The apostrophe of these two texts, which are in no catalogue, is the Mac
// Roman byte 0xD5.
constexpr const char* SHARE_WITHOUT_PARENT =
    "can\xD5"
    "t specify PXL_Depth_SHARE without parent.";
constexpr const char* NO_RECT_WITHOUT_PARENT =
    "can\xD5"
    "t specify NULL rect without parent.";

std::int32_t RefuseMissingParent(const char* text) {
  Kp_ReportErrString(PXLp_ReportCode(PXLp_Site::NewWorld), PXLp_Class_ERROR, text);
  return PXL_Err_REFUSED;
}

std::int32_t ResolveDepth(PXL_WorldHandle parentH, std::int32_t* depth) {
  if (*depth != PXL_Depth_SHARE) return PXL_Err_NONE;
  if (parentH == nullptr) return RefuseMissingParent(SHARE_WITHOUT_PARENT);
  *depth = RecordOf(parentH)->depth;
  return PXL_Err_NONE;
}

std::int32_t ResolveRect(PXL_WorldHandle parentH, const Rect* rect, Rect* resolved) {
  if (rect != nullptr) {
    *resolved = *rect;
    return PXL_Err_NONE;
  }
  if (parentH == nullptr) return RefuseMissingParent(NO_RECT_WITHOUT_PARENT);
  const PXL_World& parent = *RecordOf(parentH);
  *resolved = {0, 0, parent.height, parent.width};
  return PXL_Err_NONE;
}

// The most negative depth has no absolute value and stays as it is.
std::int32_t AbsoluteDepth(std::int32_t depth) {
  return depth < 0 ? static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(depth)) : depth;
}

// The frame size of a deferred World once more, and a provider for it. The
// provider lands in the locked record.
std::int32_t AttachMappedProvider(const Rect* rect, std::int32_t depth, PXL_WorldHandle worldH) {
  std::uint64_t frameSize = 0;
  const std::int32_t status = PXLp_ComputeGeometry(depth, rect, nullptr, &frameSize);
  if (status != PXL_Err_NONE) return status;
  return PXLp_NewMappedProvider(frameSize, &RecordOf(worldH)->pixels.provider);
}

// Geometry only. The fields are set whatever the geometry rule says: releasing
// the World relies on them.
std::int32_t BuildDeferredWorld(std::uint32_t flags, const Rect* rect, std::int32_t depth,
                                PXL_WorldHandle worldH) {
  std::uint64_t rowBytes = 0;
  std::uint64_t frameSize = 0;
  const std::int32_t status = PXLp_ComputeGeometry(depth, rect, &rowBytes, &frameSize);
  PXL_World& world = *RecordOf(worldH);
  world.hasFrame = 1;
  world.pixels.frameSize = frameSize;
  world.pixels.rowBytes = static_cast<std::int32_t>(rowBytes);
  world.depth = static_cast<std::int16_t>(depth);
  if (status != PXL_Err_NONE || (flags & PXL_Flag_MAPPED) == 0) return status;
  return AttachMappedProvider(rect, depth, worldH);
}

std::int32_t BuildPixels(std::uint32_t flags, const Rect* rect, std::int32_t depth,
                         PXL_WorldHandle worldH) {
  if ((flags & PXL_Flag_DEFERRED) != 0) return BuildDeferredWorld(flags, rect, depth, worldH);
  if (depth >= PXL_Depth_64 || (flags & PXL_Flag_NO_PLATFORM) != 0) {
    return PXLp_NewWorldNoPlatformBacking(rect, depth, worldH);
  }
  return PXLp_NewWorldPlatformBacking(rect, depth, worldH);
}

void StoreBounds(const Rect& rect, PXL_WorldHandle worldH) {
  PXL_World& world = *RecordOf(worldH);
  world.bounds = rect;
  world.width = static_cast<std::int16_t>(rect.right - rect.left);
  world.height = static_cast<std::int16_t>(rect.bottom - rect.top);
}

}  // namespace

std::int32_t PXLp_BuildWorld(PXL_WorldHandle parentH, std::uint32_t flags, std::int32_t depth,
                             std::uint32_t /*reserved*/, const Rect* rect, PXL_WorldHandle worldH) {
  Rect resolved{};
  // Both are resolved even if the first one fails: each reports what it misses.
  const std::int32_t depthStatus = ResolveDepth(parentH, &depth);
  const std::int32_t rectStatus = ResolveRect(parentH, rect, &resolved);
  if (depthStatus != PXL_Err_NONE || rectStatus != PXL_Err_NONE) return PXL_Err_REFUSED;

  const std::int32_t status = BuildPixels(flags, &resolved, AbsoluteDepth(depth), worldH);
  StoreBounds(resolved, worldH);
  return status;
}
