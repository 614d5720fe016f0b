#include "host/QDE/pixels/port_colors.h"

#include "host/QDE/pixels/errors.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace {

// The colour's place, or null for what is no port or no colour of one.
QDE_RGBColor* FindColor(GWorldPtr port, std::int32_t which) {
  qde::Surface* surface = qde::FindSurface(port);
  const bool known = which >= 0 && which < QDE_PortColorCount;
  if (surface == nullptr || !known) return nullptr;
  return &surface->Colors()[static_cast<std::size_t>(which)];
}

// Copies a colour from or to a port; null on either side is illegal.
std::int16_t Assign(QDE_RGBColor* to, const QDE_RGBColor* from) {
  if (to == nullptr || from == nullptr) return qde::SetError(qde::kIllegalParameter);
  *to = *from;
  return qde::SetError(qde::kNoError);
}

}  // namespace

std::int16_t QDE_GetPortColor(GWorldPtr port, std::int32_t which, QDE_RGBColor* color) {
  return Assign(color, FindColor(port, which));
}

std::int16_t QDE_SetPortColor(GWorldPtr port, std::int32_t which, const QDE_RGBColor* color) {
  return Assign(FindColor(port, which), color);
}
