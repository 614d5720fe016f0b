// The factor that makes small differences visible.
#include "tools/pxl/pictures/magnifier.h"

#include <cmath>
#include <initializer_list>

namespace pxl {

double MagnifierFor(double change) {
  if (change == 0.0 || std::isinf(change)) return 1.0;
  const double power = std::pow(10.0, std::floor(-std::log10(change)));
  for (const double step : {5.0, 2.0, 1.0}) {
    if (change * step * power <= 1.0) return step * power;
  }
  return power / 2.0;  // where the logarithm was rounded up
}

}  // namespace pxl
