#include "world/creation.h"

#include <cstring>

#include "platform/K.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/clearing.h"
#include "state/messages/Messages.h"
#include "world/record/geometry.h"

namespace {

// The flags that deep Worlds accept. Channel order is not among them.
constexpr std::uint32_t DEEP_FLAGS = 0x1B28;

// Tests the code as passed: a negative or a shared depth is not looked at.
bool HasRefusedFlags(std::int32_t depth, std::uint32_t flags) {
  return (depth == PXL_Depth_128 || depth == PXL_Depth_64) && (flags & ~DEEP_FLAGS) != 0;
}

// A report without words: the arguments are the host's own mistake.
std::int32_t RefuseArguments() {
  return Kp_ReportQuexErrString(PXLp_ReportCode(PXLp_Site::NewWorld), PXLp_Class_ERROR,
                                PXL_Err_REFUSED, "");
}

void ZeroRecord(PXL_WorldHandle worldH) {
  HLock(AsHandle(worldH));
  std::memset(RecordOf(worldH), 0, sizeof(PXL_World));
  HUnlock(AsHandle(worldH));
}

// K reports a failure itself, naming what was to be allocated.
PXL_WorldHandle AllocateRecord() {
  const char* what = PXLp_MessageText(PXLp_Message::GraphicsStructure);
  return reinterpret_cast<PXL_WorldHandle>(K_AllocateHandleClear(
      PXLp_ReportCode(PXLp_Site::NewWorld), what, std::uint64_t{sizeof(PXL_World)}));
}

void AbandonWorld(PXL_WorldHandle worldH, PXL_WorldHandle* outWorldH) {
  PXLp_ReleaseWorld(worldH);
  if (outWorldH != nullptr) *outWorldH = nullptr;
}

// The surface may have chosen another depth than the one asked for.
void ReadSurfaceGeometry(PXL_WorldHandle worldH) {
  const PixMapHandle map = GetPortPixMap(RecordOf(worldH)->gworld);
  if (map == nullptr || RecordOf(map) == nullptr) return;
  PXL_World& world = *RecordOf(worldH);
  world.depth = RecordOf(map)->pixelSize;
  if (world.pixels.rowBytes == 0) {
    std::uint32_t rowBytes = 0;
    PXLp_GetPixMapRowBytes(map, &rowBytes);
    world.pixels.rowBytes = static_cast<std::int32_t>(rowBytes);
  }
}

// Reading the debug settings may throw; the exception passes on to the host,
// and the unfinished World is released on the way.
std::int32_t BuildOrAbandon(PXL_WorldHandle parentH, std::uint32_t flags, const Rect* rect,
                            std::int32_t depth, std::uint32_t reserved, PXL_WorldHandle worldH,
                            PXL_WorldHandle* outWorldH) {
  std::int32_t status = PXL_Err_NONE;
  try {
    status = PXLp_BuildWorld(parentH, flags, depth, reserved, rect, worldH);
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

// From here on the World is alive.
void MarkWorld(PXL_WorldHandle worldH) {
  PXL_World& world = *RecordOf(worldH);
  world.headMark = PXL_LiveMark;
  world.tailMark = PXL_LiveMark;
  HUnlock(AsHandle(worldH));
  ++PXLp_G.worldCount;
}

}  // namespace

std::int32_t PXL_NewWorld(PXL_WorldHandle parentH, std::uint32_t flags, const Rect* rect,
                          std::int32_t depth, std::uint32_t reserved, PXL_WorldHandle worldH,
                          PXL_WorldHandle* outWorldH) {
  if (PXLp_G.bornMark != PXL_LiveMark) {
    PXLp_ReportMessage(PXLp_Site::NewWorld, PXLp_Message::Unborn);
    return PXL_Err_INVALID;
  }
  const bool ownsHandle = worldH == nullptr;
  if (ownsHandle == (outWorldH == nullptr)) return RefuseArguments();
  if (HasRefusedFlags(depth, flags)) return RefuseArguments();

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
  const std::int32_t status =
      BuildOrAbandon(parentH, flags, rect, depth, reserved, worldH, outWorldH);
  if (status != PXL_Err_NONE) return status;

  FinishWorld(worldH);
  MarkWorld(worldH);
  return PXL_Err_NONE;
}
