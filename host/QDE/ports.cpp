// The current port and device. Both are kept as they are set: which port goes
// with which device is the caller's business.
#include <atomic>

#include "QDE_host.h"

namespace {

std::atomic<GrafPtr> thePort{nullptr};
std::atomic<GDHandle> theDevice{nullptr};

}  // namespace

void GetPort(GrafPtr* port) {
  *port = thePort;
}

void MacSetPort(GrafPtr port) {
  thePort = port;
}

GDHandle GetGDevice() {
  return theDevice;
}

void SetGDevice(GDHandle device) {
  theDevice = device;
}
