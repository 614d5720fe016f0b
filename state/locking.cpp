// Locks: the pixels at a stable address.
#include "PXL.h"
#include "platform/QDE.h"
#include "platform/record_access.h"
#include "state/messages/reports.h"
#include "state/reload.h"
#include "world/record/base_address.h"
#include "world/record/geometry.h"
#include "world/record/validity.h"

namespace {

// Locking looks for a surface, then for a provider, then for a frame; unlocking
// for a surface, then for a frame. A provider whose pixels could not be mapped
// therefore stays locked: it has no frame to unlock.
enum class Backing { Surface, Provider, Frame, None };

Backing BackingToLock(const PXL_World& world) {
  if (world.hasGWorld != 0) return Backing::Surface;
  if (world.pixels.provider != nullptr) return Backing::Provider;
  return world.pixels.frame != nullptr ? Backing::Frame : Backing::None;
}

Backing BackingToUnlock(const PXL_World& world) {
  if (world.hasGWorld != 0) return Backing::Surface;
  return world.pixels.frame != nullptr ? Backing::Frame : Backing::None;
}

// Counts a lock; true for the first one. A lock on a negative count only undoes
// an unlock too many.
bool CountLock(PXL_WorldHandle worldH) {
  return RecordOf(worldH)->pixels.lockCount++ == 0;
}

// Counts an unlock; true for the last one.
bool CountUnlock(PXL_WorldHandle worldH) {
  return --RecordOf(worldH)->pixels.lockCount == 0;
}

// Returns whether the pixels were purged; nothing is locked then.
bool LockSurface(PXL_WorldHandle worldH) {
  if (!CountLock(worldH)) return false;
  const PixMapHandle map = GetPortPixMap(RecordOf(worldH)->gworld);
  if (LockPixels(map) == 0) {
    RecordOf(worldH)->pixels.lockCount = 0;
    return true;
  }
  void* base = GetPixBaseAddr(map);
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  pixels.baseAddr = base;
  pixels.rowBytes = PXLp_ReadRowBytes(map);
  return false;
}

// A first lock counts even when the provider could not map the pixels.
std::int32_t LockProvider(PXL_WorldHandle worldH) {
  const bool first = CountLock(worldH);
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  if (first) return pixels.provider->mapPixels(pixels.provider->context, &pixels.frame);
  return pixels.frame == nullptr ? PXL_Err_NO_MEMORY : PXL_Err_NONE;
}

void LockFrame(PXL_WorldHandle worldH) {
  if (!CountLock(worldH)) return;
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  pixels.baseAddr = PXLp_SkipAlignment(pixels);
}

void UnlockSurface(PXL_WorldHandle worldH) {
  if (!CountUnlock(worldH)) return;
  UnlockPixels(GetPortPixMap(RecordOf(worldH)->gworld));
  RecordOf(worldH)->pixels.baseAddr = nullptr;
}

void UnlockFrame(PXL_WorldHandle worldH) {
  if (!CountUnlock(worldH)) return;
  PXL_PixelBuffer& pixels = RecordOf(worldH)->pixels;
  pixels.baseAddr = nullptr;
  if (pixels.provider != nullptr) {
    pixels.provider->unmapPixels(pixels.provider->context, &pixels.frame);
  }
}

struct LockOutcome {
  std::int32_t status = PXL_Err_NONE;
  bool purged = false;
};

LockOutcome LockBacking(PXL_WorldHandle worldH) {
  LockOutcome outcome;
  switch (BackingToLock(*RecordOf(worldH))) {
    case Backing::Surface:
      outcome.purged = LockSurface(worldH);
      break;
    case Backing::Provider:
      outcome.status = LockProvider(worldH);
      break;
    case Backing::Frame:
      LockFrame(worldH);
      break;
    case Backing::None:
      break;
  }
  return outcome;
}

std::int32_t LockWorld(PXL_WorldHandle worldH, std::uint8_t* purgedOut) {
  const std::int32_t status = PXLp_CheckWorld(PXLp_Site::LockPixels, worldH);
  if (status != PXL_Err_NONE) return status;
  const LockOutcome outcome = LockBacking(worldH);
  if (purgedOut != nullptr) {
    *purgedOut = outcome.purged ? 1 : 0;
    return outcome.status;
  }
  if (!outcome.purged) return outcome.status;
  PXLp_ReportMessage(PXLp_Site::LockPixels, PXLp_Message::PixelBufferPurged);
  return PXL_Err_PURGED;
}

// Locks purged pixels after re-creating them. Another purge before the second
// lock is reported, since there is no output for it.
std::int32_t ReloadAndLock(PXL_WorldHandle worldH, std::uint8_t* loadedOut, bool* relocked) {
  std::int32_t status = PXLp_ReloadPixels(worldH, loadedOut);
  if (status != PXL_Err_NONE) return status;
  if (loadedOut != nullptr && *loadedOut == 0) return status;
  status = LockWorld(worldH, nullptr);
  *relocked = status == PXL_Err_NONE;
  return status;
}

}  // namespace

std::int32_t PXL_LockPixels(std::uint32_t /*reserved*/, PXL_WorldHandle worldH,
                            std::uint8_t* purgedOut) {
  return LockWorld(worldH, purgedOut);
}

void PXL_UnlockPixels(PXL_WorldHandle worldH) {
  if (PXLp_CheckWorld(PXLp_Site::UnlockPixels, worldH) != PXL_Err_NONE) return;
  switch (BackingToUnlock(*RecordOf(worldH))) {
    case Backing::Surface:
      UnlockSurface(worldH);
      break;
    case Backing::Frame:
      UnlockFrame(worldH);
      break;
    default:
      break;
  }
  if (RecordOf(worldH)->pixels.lockCount < 0) {
    PXLp_ReportMessage(PXLp_Site::UnlockPixels, PXLp_Message::UnbalancedUnlock);
  }
}

std::int32_t PXL_LoadLockPixels(std::uint32_t /*reserved*/, PXL_WorldHandle worldH,
                                std::uint8_t* loadedOut, std::uint8_t* reloadedOut) {
  bool relocked = false;
  std::uint8_t purged = 0;
  std::int32_t status = LockWorld(worldH, &purged);
  if (status == PXL_Err_NONE && purged != 0) {
    status = ReloadAndLock(worldH, loadedOut, &relocked);
  } else if (loadedOut != nullptr) {
    // Set after a failed lock too: this output concerns purging alone.
    *loadedOut = 1;
  }
  if (reloadedOut != nullptr) *reloadedOut = relocked ? 1 : 0;
  return status;
}
