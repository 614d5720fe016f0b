// CopyBits in srcCopy, a pixel at a time: slow, obvious, and with nothing of
// the layer's own code.
#ifndef TESTS_HOST_QDE_REFERENCE_COPY_H
#define TESTS_HOST_QDE_REFERENCE_COPY_H

#include <cstdint>
#include <vector>

#include "QDE_host.h"

namespace reference {

// A picture by value: rows without padding, in the order of `format`.
struct Picture {
  Rect bounds;
  int depth;
  int format;
  std::vector<std::uint8_t> bytes;
};

// What the destination shows after the copy.
Picture Copy(const Picture& source, const Picture& destination, const Rect& from, const Rect& to);

// The index of the standard colour nearest to red, green and blue.
int NearestStandard(int red, int green, int blue);

}  // namespace reference

#endif
