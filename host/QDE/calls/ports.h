// The current port and device, and the main device.
#ifndef QDE_PORTS_H
#define QDE_PORTS_H

#include <cstdint>

#include "host/QDE/pixels/port_colors.h"

namespace qde {

class Surface;

std::int16_t MainDepth();

// The colours of the current port; the initial ones if it is no port of a live world.
PortColors CurrentColors();

// Resets the current port and device if they belong to the surface, before its
// disposal.
void LeaveSurface(const Surface& surface);

}  // namespace qde

#endif
