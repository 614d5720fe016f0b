// Limits of windows and tiles.
#include "tools/pxl/formats/exr/exr_window.h"

#include <string>

#include "tools/pxl/system/failure.h"

namespace pxl {
namespace {

// Far above any picture, and low enough that the libraries' tables stay small.
constexpr std::int64_t kLargestSide = 131072;
constexpr std::int64_t kLargestTile = 1 << 26;  // pixels

std::string SizeOf(std::int64_t width, std::int64_t height) {
  return std::to_string(width) + " x " + std::to_string(height) + " pixels";
}

}  // namespace

void CheckDisplayWindow(const ExrWindow& display) {
  if (display.Width() < 1 || display.Height() < 1) {
    throw Failure("damaged OpenEXR: empty display window");
  }
}

void CheckDataWindow(const ExrWindow& data) {
  if (data.Width() < 1 || data.Height() < 1) throw Failure("damaged OpenEXR: empty data window");
  if (data.Width() > kLargestSide || data.Height() > kLargestSide) {
    throw Failure("a data window of " + SizeOf(data.Width(), data.Height()) + " is too large");
  }
}

void CheckTileSize(const ExrWindow& data, std::int64_t width, std::int64_t height) {
  if (width < 1 || height < 1) throw Failure("damaged OpenEXR: tiles of an impossible size");
  if (width > kLargestSide || height > kLargestSide || width * height > kLargestTile ||
      data.Width() * height > kLargestTile) {
    throw Failure("tiles of " + SizeOf(width, height) + " are too large");
  }
}

}  // namespace pxl
