// Offscreen worlds. There are no surfaces yet, so that none can be made and
// every world and pixel map that comes in is null.
#include <cstdint>

#include "QDE_host.h"
#include "errors.h"

std::int16_t NewGWorld(GWorldPtr* world, std::int16_t, const Rect*, CTabHandle, GDHandle,
                       std::uint32_t) {
  if (world != nullptr) *world = nullptr;
  return qde::SetError(qde::kIllegalParameter);
}

std::uint32_t UpdateGWorld(GWorldPtr*, std::int16_t, const Rect*, CTabHandle, GDHandle,
                           std::uint32_t) {
  return static_cast<std::uint32_t>(std::int32_t{qde::SetError(qde::kIllegalParameter)});
}

void DisposeGWorld(GWorldPtr) {
}

GDHandle GetGWorldDevice(GWorldPtr) {
  return nullptr;
}

PixMapHandle GetPortPixMap(GWorldPtr) {
  return nullptr;
}

Boolean LockPixels(PixMapHandle) {
  return 0;
}

void UnlockPixels(PixMapHandle) {
}

Ptr GetPixBaseAddr(PixMapHandle) {
  return nullptr;
}

const BitMap* GetPortBitMapForCopyBits(CGrafPtr) {
  return nullptr;
}
