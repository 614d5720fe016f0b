// The differences of two pictures, sample by sample.
#ifndef TOOLS_PXL_PICTURES_PICTURE_DIFFERENCE_H
#define TOOLS_PXL_PICTURES_PICTURE_DIFFERENCE_H

#include <cstdint>
#include <optional>
#include <string>

#include "tools/pxl/pictures/picture.h"

namespace pxl {

struct SampleDifference {
  std::int64_t x = 0;
  std::int64_t y = 0;
  std::string channel;  // "red", "green", "blue", "alpha" or "grey"
  // As in the files: whole numbers up to 255 or 65535, or floats.
  double first = 0.0;
  double second = 0.0;
};

// Floats are compared by value: -0 equals 0, and one NaN any other. Their steps
// are ULPs, the number of floats between them, both zeros being one. A value that is
// not finite has no distance to another; such a pair is beyond every tolerance.
struct PictureDifference {
  std::uint64_t pixels = 0;   // beyond the tolerance
  std::uint64_t samples = 0;  // of those pixels
  std::uint64_t withoutDistance = 0;
  // The first beyond the tolerance, from the top, in a row from the left, in a
  // pixel in the order red, green, blue, alpha.
  std::optional<SampleDifference> first;
  // Among pairs with a distance, whether beyond the tolerance or not.
  std::uint64_t mostSteps = 0;
  double largest = 0.0;  // where full scale is 1
};

// Of two pictures of one size and type of samples. The tolerance is in steps of
// the samples as they are in files, for floats in ULPs. Where both pictures are
// grey, a pixel has one grey sample.
PictureDifference Compare(const Picture& a, const Picture& b, std::uint64_t tolerance);

// The size of each difference beyond the tolerance as an opaque Integer8 picture
// on black. The largest is scaled near full scale, and all are bright enough to be
// visible; one without distance is full scale. Differences of alpha show in grey.
Picture PictureOf(const PictureDifference& difference, const Picture& a, const Picture& b,
                  std::uint64_t tolerance);

}  // namespace pxl

#endif
