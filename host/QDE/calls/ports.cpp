// The current port and device, the main device, and the colours of ports.
#include "host/QDE/calls/ports.h"

#include "QDE_host.h"
#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/errors.h"
#include "host/QDE/pixels/layout.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace qde {
namespace {

constexpr std::int16_t kMainDepth = 32;
constexpr Rect kMainRect = {0, 0, 1080, 1920};

// The screen of the main device: a pixel map without pixels.
PixMap MakeMainMap() {
  PixMap map{};
  map.rowBytes = static_cast<std::int16_t>(Width(kMainRect) * 4 | kPixMapFlag);
  map.bounds = kMainRect;
  map.hRes = map.vRes = 72 << 16;
  map.pixelType = 16;
  map.pixelSize = kMainDepth;
  map.cmpCount = 3;
  map.cmpSize = 8;
  map.pmTable = DirectColors();
  return map;
}

// Master pointers: a handle is the address of one.
PixMap theMainMap = MakeMainMap();
PixMap* theMainMapMaster = &theMainMap;
QDE_Device theMainDevice = {QDE_DeviceType_DIRECT, &theMainMapMaster, kMainRect};
QDE_Device* theMainDeviceMaster = &theMainDevice;

GrafPtr thePort = nullptr;
GDHandle theDevice = &theMainDeviceMaster;

// The address of a port's colour, null without such a port or colour.
QDE_RGBColor* FindColor(GWorldPtr port, std::int32_t which) {
  Surface* surface = FindSurface(port);
  const bool known = which >= 0 && which < QDE_PortColorCount;
  if (surface == nullptr || !known) return nullptr;
  return &surface->Colors()[static_cast<std::size_t>(which)];
}

// Copies a colour from or to a port; null on either side is illegal.
std::int16_t Assign(QDE_RGBColor* to, const QDE_RGBColor* from) {
  if (to == nullptr || from == nullptr) return SetError(kIllegalParameter);
  *to = *from;
  return SetError(kNoError);
}

}  // namespace

std::int16_t MainDepth() {
  return kMainDepth;
}

PortColors CurrentColors() {
  Surface* surface = FindSurface(thePort);
  return surface != nullptr ? surface->Colors() : kInitialColors;
}

void LeaveSurface(const Surface& surface) {
  if (surface.HasPort(thePort)) thePort = nullptr;
  if (surface.OwnsDevice(theDevice)) theDevice = QDE_MainDevice();
}

}  // namespace qde

void GetPort(GrafPtr* port) {
  if (port != nullptr) *port = qde::thePort;
}

void MacSetPort(GrafPtr port) {
  qde::thePort = port;
}

GDHandle GetGDevice() {
  return qde::theDevice;
}

void SetGDevice(GDHandle device) {
  qde::theDevice = device != nullptr ? device : QDE_MainDevice();
}

GDHandle QDE_MainDevice() {
  return &qde::theMainDeviceMaster;
}

std::int16_t QDE_GetPortColor(GWorldPtr port, std::int32_t which, QDE_RGBColor* color) {
  return qde::Assign(color, qde::FindColor(port, which));
}

std::int16_t QDE_SetPortColor(GWorldPtr port, std::int32_t which, const QDE_RGBColor* color) {
  return qde::Assign(qde::FindColor(port, which), color);
}
