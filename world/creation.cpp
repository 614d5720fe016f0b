// PXL_NewWorld: the handle, its marks, and the release after a failure.
#include <cstring>

#include "PXL.h"
#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/clearing.h"
#include "state/messages/reports.h"
#include "world/build.h"
#include "world/disposal.h"
#include "world/record/geometry.h"

namespace {

// The flags that deep Worlds accept. Channel order is not among them.
constexpr std::uint32_t kDeepFlags = 0x1B28;

// Tests the code as passed: neither a negative nor a shared depth is resolved.
bool HasRefusedFlags(std::int32_t depth, std::uint32_t flags) {
  return (depth == PXL_Depth_128 || depth == PXL_Depth_64) && (flags & ~kDeepFlags) != 0;
}

// The caller passes a handle to build in, or a place for a new one, never both.
bool IsOneHandleGiven(PXL_WorldHandle worldH, const PXL_WorldHandle* outWorldH) {
  return (worldH == nullptr) != (outWorldH == nullptr);
}

// The report has no text: wrong arguments are a mistake of the host's own code.
std::int32_t RefuseArguments() {
  return Kp_ReportQuexErrString(PXLp_MakeReportCode(PXLp_Site::NewWorld), PXLp_kClassError,
                                PXL_Err_REFUSED, "");
}

void ZeroRecord(PXL_WorldHandle worldH) {
  HLock(AsHandle(worldH));
  std::memset(RecordOf(worldH), 0, sizeof(PXL_World));
  HUnlock(AsHandle(worldH));
}

// K itself reports a failure and needs a name for the block.
PXL_WorldHandle AllocateRecord() {
  const char* what = PXLp_LookUpMessage(PXLp_Message::GraphicsStructure);
  return reinterpret_cast<PXL_WorldHandle>(K_AllocateHandleClear(
      PXLp_MakeReportCode(PXLp_Site::NewWorld), what, std::uint64_t{sizeof(PXL_World)}));
}

void AbandonWorld(PXL_WorldHandle worldH, PXL_WorldHandle* outWorldH) {
  PXLp_ReleaseWorld(worldH);
  if (outWorldH != nullptr) *outWorldH = nullptr;
}

// The surface may have another depth than the requested one.
void ReadSurfaceGeometry(PXL_WorldHandle worldH) {
  const PixMapHandle map = GetPortPixMap(RecordOf(worldH)->gworld);
  if (map == nullptr || RecordOf(map) == nullptr) return;
  PXL_World& world = *RecordOf(worldH);
  world.depth = RecordOf(map)->pixelSize;
  if (world.pixels.rowBytes == 0) world.pixels.rowBytes = PXLp_ReadRowBytes(map);
}

// Reading the debug settings may throw. The exception passes on to the host,
// after the unfinished World has been released.
std::int32_t BuildOrAbandon(const PXLp_WorldRequest& request, PXL_WorldHandle worldH,
                            PXL_WorldHandle* outWorldH) {
  std::int32_t status = PXL_Err_NONE;
  try {
    status = PXLp_BuildWorld(request, worldH);
  } catch (...) {
    AbandonWorld(worldH, outWorldH);
    throw;
  }
  if (status != PXL_Err_NONE) AbandonWorld(worldH, outWorldH);
  return status;
}

void FinishWorld(PXL_WorldHandle worldH) {
  if (RecordOf(worldH)->hasGWorld != 0) ReadSurfaceGeometry(worldH);
  if ((RecordOf(worldH)->flags & PXL_Flag_CLEAR) != 0) PXLp_FillWorld(worldH, 0);
}

// Makes the World live.
void MarkWorld(PXL_WorldHandle worldH) {
  PXL_World& world = *RecordOf(worldH);
  world.headMark = PXL_LiveMark;
  world.tailMark = PXL_LiveMark;
  HUnlock(AsHandle(worldH));
  ++PXLp_G.worldCount;
}

}  // namespace

std::int32_t PXL_NewWorld(PXL_WorldHandle parentH, std::uint32_t flags, const Rect* rect,
                          std::int32_t depth, std::uint32_t /*reserved*/, PXL_WorldHandle worldH,
                          PXL_WorldHandle* outWorldH) {
  if (PXLp_G.bornMark != PXL_LiveMark) {
    PXLp_ReportMessage(PXLp_Site::NewWorld, PXLp_Message::Unborn);
    return PXL_Err_INVALID;
  }
  if (!IsOneHandleGiven(worldH, outWorldH)) return RefuseArguments();
  if (HasRefusedFlags(depth, flags)) return RefuseArguments();

  const bool ownsHandle = worldH == nullptr;
  if (ownsHandle) {
    worldH = AllocateRecord();
    *outWorldH = worldH;
    if (worldH == nullptr) return PXL_Err_NO_MEMORY;
  } else {
    ZeroRecord(worldH);
  }

  HLock(AsHandle(worldH));
  RecordOf(worldH)->flags = flags;
  RecordOf(worldH)->ownsHandle = ownsHandle ? 1 : 0;
  const std::int32_t status = BuildOrAbandon({parentH, flags, rect, depth}, worldH, outWorldH);
  if (status != PXL_Err_NONE) return status;

  FinishWorld(worldH);
  MarkWorld(worldH);
  return PXL_Err_NONE;
}
