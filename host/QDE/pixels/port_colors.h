// The colours that a port draws with.
#ifndef QDE_PORT_COLORS_H
#define QDE_PORT_COLORS_H

#include <array>

#include "QDE_host.h"

namespace qde {

// In the order of QDE_PortColor.
using PortColors = std::array<QDE_RGBColor, QDE_PortColorCount>;

// The colours of a new port.
constexpr PortColors kInitialColors = {
    {{0, 0, 0}, {0xFFFF, 0xFFFF, 0xFFFF}, {0, 0, 0}, {0xCCCC, 0xCCCC, 0xFFFF}}};

}  // namespace qde

#endif
