// Windows of pixels in an OpenEXR file, and the limits of their sizes.
#ifndef TOOLS_PXL_FORMATS_EXR_EXR_WINDOW_H
#define TOOLS_PXL_FORMATS_EXR_EXR_WINDOW_H

#include <cstdint>

namespace pxl {

// A window of pixels, both edges inclusive, in numbers that do not overflow.
struct ExrWindow {
  std::int64_t left, top, right, bottom;

  std::int64_t Width() const { return right - left + 1; }
  std::int64_t Height() const { return bottom - top + 1; }
  bool operator==(const ExrWindow&) const = default;
};

// The libraries allocate tables by these sizes before they read pixels, and their
// own errors would not name the cause. Each function throws Failure.
void CheckDisplayWindow(const ExrWindow& display);
void CheckDataWindow(const ExrWindow& data);
void CheckTileSize(const ExrWindow& data, std::int64_t width, std::int64_t height);

}  // namespace pxl

#endif
