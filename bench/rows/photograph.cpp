// Reads a sample and repeats it over a picture, mirrored every other time.
#include "bench/rows/photograph.h"

#include <cstring>

#include "tools/pxl/formats/picture_file.h"

namespace bench {
namespace {

constexpr int kPixelBytes = 4;

// From 0 up to the last one and back again.
std::int64_t Mirrored(int position, std::int64_t size) {
  const std::int64_t phase = position % (2 * size);
  return phase < size ? phase : 2 * size - 1 - phase;
}

}  // namespace

void FillWithPhotograph(const Picture& picture) {
  const pxl::Picture sample = pxl::InputPicture(BENCH_PHOTOGRAPH).Read();
  for (int y = 0; y < picture.height; ++y) {
    const std::byte* from = sample.Row(Mirrored(y, sample.header.height));
    std::uint8_t* to = picture.Row(y);
    for (int x = 0; x < picture.width; ++x, to += kPixelBytes) {
      std::memcpy(to, from + kPixelBytes * Mirrored(x, sample.header.width), kPixelBytes);
    }
  }
}

}  // namespace bench
