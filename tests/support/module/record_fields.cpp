// Compares two records field by field.
#include "tests/support/module/record_fields.h"

#include <tuple>

bool operator==(const Rect& a, const Rect& b) {
  return std::tie(a.top, a.left, a.bottom, a.right) == std::tie(b.top, b.left, b.bottom, b.right);
}

std::vector<std::string> ChangedFields(const PXL_World& before, const PXL_World& after) {
  std::vector<std::string> names;
  const auto compare = [&names](const char* name, const auto& a, const auto& b) {
    if (!(a == b)) names.emplace_back(name);
  };
  const PXL_PixelBuffer& old = before.pixels;
  const PXL_PixelBuffer& now = after.pixels;
  compare("headMark", before.headMark, after.headMark);
  compare("flags", before.flags, after.flags);
  compare("width", before.width, after.width);
  compare("height", before.height, after.height);
  compare("bounds", before.bounds, after.bounds);
  compare("depth", before.depth, after.depth);
  compare("ownsHandle", before.ownsHandle, after.ownsHandle);
  compare("hasFrame", before.hasFrame, after.hasFrame);
  compare("gworld", before.gworld, after.gworld);
  compare("gdevice", before.gdevice, after.gdevice);
  compare("hasGWorld", before.hasGWorld, after.hasGWorld);
  compare("lockCount", old.lockCount, now.lockCount);
  compare("frame", old.frame, now.frame);
  compare("frameSize", old.frameSize, now.frameSize);
  compare("alignOffset", old.alignOffset, now.alignOffset);
  compare("baseAddr", old.baseAddr, now.baseAddr);
  compare("rowBytes", old.rowBytes, now.rowBytes);
  compare("provider", old.provider, now.provider);
  compare("tailMark", before.tailMark, after.tailMark);
  return names;
}
