// The current port and device, and the main device.
#ifndef QDE_PORTS_H
#define QDE_PORTS_H

#include <cstdint>

#include "host/QDE/pixels/port_colors.h"

namespace qde {

class Surface;

std::int16_t MainDepth();

// Those of the current port; the initial ones when that is no live world's.
PortColors CurrentColors();

// The surface is about to go: it is neither current port nor current device any
// more.
void LeaveSurface(const Surface& surface);

}  // namespace qde

#endif
