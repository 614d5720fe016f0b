// Worlds whose pixels are a drawing surface.
#include "world/surface_world.h"

#include "memory/failure_report.h"
#include "platform/QDE.h"
#include "platform/record_access.h"

namespace {

// NewGWorld's own flags.
constexpr std::uint32_t kPixPurge = 1;
constexpr std::uint32_t kKeepLocal = 8;

constexpr std::int32_t kForcedBits = 8;

// Restores the current port and device, device first, even if there was none.
class SavedPort {
 public:
  SavedPort() {
    GetPort(&port_);
    device_ = GetGDevice();
  }
  ~SavedPort() {
    SetGDevice(device_);
    MacSetPort(port_);
  }
  SavedPort(const SavedPort&) = delete;
  SavedPort& operator=(const SavedPort&) = delete;

 private:
  GrafPtr port_ = nullptr;
  GDHandle device_ = nullptr;
};

// Forces the layer to build bitmaps during the guard's lifetime.
class ForcedBitmaps {
 public:
  explicit ForcedBitmaps(std::uint32_t keepLocal) {
    QDE_ForceBitmapCreationBitfields(1, static_cast<std::int32_t>(keepLocal), kForcedBits);
  }
  ~ForcedBitmaps() { QDE_ForceBitmapCreationBitfields(0, 0, 0); }
  ForcedBitmaps(const ForcedBitmaps&) = delete;
  ForcedBitmaps& operator=(const ForcedBitmaps&) = delete;
};

// A failure is reported while the forcing is still on.
std::int32_t MakeSurface(std::uint32_t flags, const Rect& rect, std::int32_t depth,
                         GWorldPtr* surface) {
  const std::uint32_t keepLocal = (flags & PXL_Flag_KEEP_LOCAL) != 0 ? kKeepLocal : 0;
  const std::uint32_t purge = (flags & PXL_Flag_PURGEABLE) != 0 ? kPixPurge : 0;
  const ForcedBitmaps forced(keepLocal);
  const std::int32_t status = NewGWorld(surface, static_cast<std::int16_t>(depth), &rect, nullptr,
                                        nullptr, purge | keepLocal);
  if (status != 0) PXLp_ReportBufferError(PXLp_Site::SurfaceWorld, status, {rect, depth});
  return status;
}

}  // namespace

std::int32_t PXLp_NewWorldPlatformBacking(const Rect& rect, std::int32_t depth,
                                          PXL_WorldHandle worldH) {
  const SavedPort saved;
  GWorldPtr surface = nullptr;
  const std::int32_t status = MakeSurface(RecordOf(worldH)->flags, rect, depth, &surface);
  if (status != 0) return status;

  const GDHandle device = GetGWorldDevice(surface);
  PXL_World& world = *RecordOf(worldH);
  world.gdevice = device;
  world.hasGWorld = 1;
  world.gworld = surface;
  return PXL_Err_NONE;
}
