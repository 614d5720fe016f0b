// Locks, unlocks and addresses of pixels.
#include "QDE_host.h"
#include "host/QDE/pixels/errors.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace {

qde::Surface* SurfaceOf(PixMapHandle pixels) {
  qde::Surface* surface = qde::FindSurface(pixels);
  qde::SetError(surface != nullptr ? qde::kNoError : qde::kIllegalParameter);
  return surface;
}

}  // namespace

Boolean LockPixels(PixMapHandle pixels) {
  qde::Surface* surface = SurfaceOf(pixels);
  return surface != nullptr && surface->Lock() ? 1 : 0;
}

void UnlockPixels(PixMapHandle pixels) {
  qde::Surface* surface = qde::FindSurface(pixels);
  if (surface != nullptr) surface->Unlock();
}

Ptr GetPixBaseAddr(PixMapHandle pixels) {
  qde::Surface* surface = SurfaceOf(pixels);
  return surface != nullptr ? surface->Pixels() : nullptr;
}
