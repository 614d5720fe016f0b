// Worlds as pictures for a screen, and the differences of two Worlds.
#ifndef TOOLS_PXL_MODULE_COMPARISON_H
#define TOOLS_PXL_MODULE_COMPARISON_H

#include <string>

#include "tools/pxl/module/world.h"
#include "tools/pxl/pictures/picture.h"

namespace pxl {

// The World as an Integer8 picture.
Picture PictureOf(const World& world);

enum class Compared {
  AllChannels,
  ColoursOnly  // where one of the Worlds has no alpha
};

// The largest difference between channels of two Worlds of one size, where full
// scale is 1; infinite if one of a pair is. Pairs with a NaN are ignored.
double LargestChange(const World& before, const World& after,
                     Compared compared = Compared::AllChannels);

// "nothing changed" or "largest change 0.0039".
std::string ChangeText(double change);

// The size of each difference times the factor, 1 at most, as an opaque Integer8
// picture. A difference of alpha that is larger than that of a colour takes its
// place, so that it shows in grey.
Picture ChangePicture(const World& before, const World& after, double factor,
                      Compared compared = Compared::AllChannels);

}  // namespace pxl

#endif
