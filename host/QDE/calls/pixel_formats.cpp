// The two formats of 32-bit pixels: their bytes are in reverse order.
#include <cstdint>

#include "QDE_host.h"
#include "host/QDE/pixels/errors.h"
#include "host/QDE/pixels/faults.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/reverse_pixels.h"
#include "host/QDE/surfaces/surface.h"

namespace {

bool theForcing = false;

// The surface; null without one of 32 bits.
qde::Surface* Find32(GWorldPtr world) {
  qde::Surface* surface = qde::FindSurface(world);
  return surface != nullptr && surface->GetLayout().depth == 32 ? surface : nullptr;
}

qde::Error GetFormat(GWorldPtr world, std::int32_t* format) {
  const qde::Surface* surface = Find32(world);
  if (surface == nullptr || format == nullptr) return qde::kIllegalParameter;
  *format = surface->GetFormat();
  return qde::kNoError;
}

qde::Error SetFormat(GWorldPtr world, std::int32_t format) {
  qde::Surface* surface = Find32(world);
  const bool known = format == qde::kARGB || format == qde::kBGRA;
  if (surface == nullptr || !known) return qde::kIllegalParameter;
  surface->SetFormat(static_cast<qde::Format>(format));
  return qde::kNoError;
}

}  // namespace

void QDE_ConvertBitsFast(void* base, std::int16_t height, std::int16_t width,
                         std::int32_t rowBytes) {
  if (base != nullptr) qde::ReversePixels(base, height, width, rowBytes);
}

std::int16_t QDE_GetGWorld32PixmapFormat(GWorldPtr world, std::int32_t* format) {
  const qde::Error fault = qde::TakeFault(QDE_Call_GET_PIXMAP_FORMAT);
  return qde::SetError(fault != qde::kNoError ? fault : GetFormat(world, format));
}

std::int16_t QDE_SetGWorld32PixmapFormat(GWorldPtr world, std::int32_t format) {
  const qde::Error fault = qde::TakeFault(QDE_Call_SET_PIXMAP_FORMAT);
  return qde::SetError(fault != qde::kNoError ? fault : SetFormat(world, format));
}

// All pixels are in main memory anyway: nothing has to be forced.
void QDE_ForceBitmapCreationBitfields(Boolean on, std::int32_t, std::int32_t) {
  theForcing = on != 0;
}

Boolean QDE_IsBitmapCreationForced() {
  return theForcing ? 1 : 0;
}
