// The factor that makes small differences visible.
#ifndef TOOLS_PXL_PICTURES_MAGNIFIER_H
#define TOOLS_PXL_PICTURES_MAGNIFIER_H

namespace pxl {

// The largest of .. 0.2, 0.5, 1, 2, 5, 10 .. whose product with the change is at most
// 1. The change is not negative; for 0 and infinity the factor is 1.
double MagnifierFor(double change);

}  // namespace pxl

#endif
