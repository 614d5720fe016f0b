// How much to enlarge what is too small to be seen.
#ifndef TOOLS_PXL_PICTURES_MAGNIFIER_H
#define TOOLS_PXL_PICTURES_MAGNIFIER_H

namespace pxl {

// The largest of .. 0.2, 0.5, 1, 2, 5, 10 .. that takes the change, not negative,
// to 1 at most; 1 for none and for an infinite one.
double MagnifierFor(double change);

}  // namespace pxl

#endif
