// The steps that fill a new World's record.
#include "world/build.h"

#include "memory/mapped_provider.h"
#include "platform/K.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "world/frame_world.h"
#include "world/record/geometry.h"
#include "world/surface_world.h"

namespace {

// These two texts are not in the catalogue. Their apostrophe is the Mac Roman
// byte 0xD5.
constexpr const char* kShareWithoutParent =
    "can\xD5"
    "t specify PXL_Depth_SHARE without parent.";
constexpr const char* kNoRectWithoutParent =
    "can\xD5"
    "t specify NULL rect without parent.";

std::int32_t RefuseMissingParent(const char* text) {
  Kp_ReportErrString(PXLp_MakeReportCode(PXLp_Site::NewWorld), PXLp_kClassError, text);
  return PXL_Err_REFUSED;
}

std::int32_t ResolveDepth(PXL_WorldHandle parentH, std::int32_t* depth) {
  if (*depth != PXL_Depth_SHARE) return PXL_Err_NONE;
  if (parentH == nullptr) return RefuseMissingParent(kShareWithoutParent);
  *depth = RecordOf(parentH)->depth;
  return PXL_Err_NONE;
}

std::int32_t ResolveRect(const PXLp_WorldRequest& request, Rect* rect) {
  if (request.rect != nullptr) {
    *rect = *request.rect;
    return PXL_Err_NONE;
  }
  if (request.parentH == nullptr) return RefuseMissingParent(kNoRectWithoutParent);
  const PXL_World& parent = *RecordOf(request.parentH);
  *rect = {0, 0, parent.height, parent.width};
  return PXL_Err_NONE;
}

// The most negative depth has no absolute value and stays as it is.
std::int32_t AbsoluteDepth(std::int32_t depth) {
  return depth < 0 ? static_cast<std::int32_t>(0U - static_cast<std::uint32_t>(depth)) : depth;
}

// Runs the geometry rule again for the size that the provider is made for. The
// provider is stored into the locked record.
std::int32_t AttachMappedProvider(const Rect& rect, std::int32_t depth, PXL_WorldHandle worldH) {
  PXLp_Geometry geometry;
  const std::int32_t status = PXLp_ComputeGeometry(rect, depth, &geometry);
  if (status != PXL_Err_NONE) return status;
  return PXLp_NewMappedProvider(geometry.frameSize, &RecordOf(worldH)->pixels.provider);
}

// Stores the geometry without allocating pixels. The fields are set even when
// the geometry is refused: releasing the World relies on them.
std::int32_t BuildDeferredWorld(std::uint32_t flags, const Rect& rect, std::int32_t depth,
                                PXL_WorldHandle worldH) {
  PXLp_Geometry geometry;
  const std::int32_t status = PXLp_ComputeGeometry(rect, depth, &geometry);
  PXL_World& world = *RecordOf(worldH);
  world.hasFrame = 1;
  world.pixels.frameSize = geometry.frameSize;
  world.pixels.rowBytes = static_cast<std::int32_t>(geometry.rowBytes);
  world.depth = static_cast<std::int16_t>(depth);
  if (status != PXL_Err_NONE || (flags & PXL_Flag_MAPPED) == 0) return status;
  return AttachMappedProvider(rect, depth, worldH);
}

std::int32_t BuildPixels(std::uint32_t flags, const Rect& rect, std::int32_t depth,
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

std::int32_t PXLp_BuildWorld(const PXLp_WorldRequest& request, PXL_WorldHandle worldH) {
  Rect rect{};
  std::int32_t depth = request.depth;
  // Both are resolved even if the first one fails: each reports its own error.
  const std::int32_t depthStatus = ResolveDepth(request.parentH, &depth);
  const std::int32_t rectStatus = ResolveRect(request, &rect);
  if (depthStatus != PXL_Err_NONE || rectStatus != PXL_Err_NONE) return PXL_Err_REFUSED;

  const std::int32_t status = BuildPixels(request.flags, rect, AbsoluteDepth(depth), worldH);
  StoreBounds(rect, worldH);
  return status;
}
