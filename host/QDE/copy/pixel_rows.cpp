// Rows that are read as they are, reordered, or through a palette.
#include "host/QDE/copy/pixel_rows.h"

#include <array>
#include <cstring>
#include <vector>

#include "host/QDE/pixels/colors.h"
#include "host/QDE/pixels/pixel.h"
#include "host/QDE/rows/row_colors.h"
#include "simd/processor_level.h"
#include "simd/routines.h"

namespace qde {
namespace {

class RowsAsTheyAre : public PixelRows {
 public:
  const std::uint8_t* Read(const std::uint8_t* row, std::size_t /*count*/) override { return row; }
  void Copy(const std::uint8_t* row, std::uint8_t* pixels, std::size_t count) override {
    std::memcpy(pixels, row, count * sizeof(Pixel32));
  }
};

class ReorderedRows : public PixelRows {
 public:
  explicit ReorderedRows(std::size_t width) : pixels_(width * sizeof(Pixel32)) {}

  const std::uint8_t* Read(const std::uint8_t* row, std::size_t count) override {
    Copy(row, pixels_.data(), count);
    return pixels_.data();
  }
  void Copy(const std::uint8_t* row, std::uint8_t* pixels, std::size_t count) override {
    std::memcpy(pixels, row, count * sizeof(Pixel32));
    simd::BestRoutines().reverseBytes32(pixels, count);
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
    Copy(row, pixels_.data(), count);
    return pixels_.data();
  }
  void Copy(const std::uint8_t* row, std::uint8_t* pixels, std::size_t count) override {
    show_(colors_.data()->data(), row, pixels, count);
  }

 private:
  std::array<Pixel32, 256> colors_{};
  decltype(ColorRoutines::show) show_ = ColorRoutinesOf(simd::ProcessorLevel()).show;
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
