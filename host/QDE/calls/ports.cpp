#include "host/QDE/calls/ports.h"

#include "QDE_host.h"
#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/layout.h"
#include "host/QDE/surfaces/registry.h"
#include "host/QDE/surfaces/surface.h"

namespace qde {
namespace {

constexpr std::int16_t kMainDepth = 32;
constexpr Rect kMainRect = {0, 0, 1080, 1920};

// Of a screen that nobody sees: a pixel map without pixels.
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

// Handles need master pointers that can be pointed to.
PixMap theMainMap = MakeMainMap();
PixMap* theMainMapMaster = &theMainMap;
QDE_Device theMainDevice = {QDE_DeviceType_DIRECT, &theMainMapMaster, kMainRect};
QDE_Device* theMainDeviceMaster = &theMainDevice;

GrafPtr thePort = nullptr;
GDHandle theDevice = &theMainDeviceMaster;

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
