#include "pixel_rows.h"

#include <array>
#include <cstring>
#include <vector>

#include "colors.h"
#include "pixel.h"
#include "simd/pixels32.h"

namespace qde {
namespace {

class RowsAsTheyAre : public PixelRows {
 public:
  const std::uint8_t* Read(const std::uint8_t* row, std::size_t /*count*/) override { return row; }
};

class ReorderedRows : public PixelRows {
 public:
  explicit ReorderedRows(std::size_t width) : pixels_(width * sizeof(Pixel32)) {}

  const std::uint8_t* Read(const std::uint8_t* row, std::size_t count) override {
    std::memcpy(pixels_.data(), row, count * sizeof(Pixel32));
    simd::ReverseBytes32(pixels_.data(), count);
    return pixels_.data();
  }

 private:
  std::vector<std::uint8_t> pixels_;
};

class RowsOfColors : public PixelRows {
 public:
  RowsOfColors(const Palette& palette, Format format, std::size_t width)
      : pixels_(width * sizeof(Pixel32)) {
    for (std::size_t i = 0; i < colors_.size(); ++i) {
      colors_[i] = ToPixel(palette[static_cast<std::uint8_t>(i)], format);
    }
  }

  const std::uint8_t* Read(const std::uint8_t* row, std::size_t count) override {
    std::uint8_t* pixels = pixels_.data();
    for (std::size_t i = 0; i < count; ++i) {
      std::memcpy(pixels + i * sizeof(Pixel32), colors_[row[i]].data(), sizeof(Pixel32));
    }
    return pixels;
  }

 private:
  std::array<Pixel32, 256> colors_{};
  std::vector<std::uint8_t> pixels_;
};

}  // namespace

std::unique_ptr<PixelRows> MakePixelRows(const Image& image, Format format, std::size_t width) {
  if (image.layout.depth == 8) {
    return std::make_unique<RowsOfColors>(Palette(*image.colors), format, width);
  }
  if (image.format != format) return std::make_unique<ReorderedRows>(width);
  return std::make_unique<RowsAsTheyAre>();
}

}  // namespace qde
