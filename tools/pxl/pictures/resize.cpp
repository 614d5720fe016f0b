// Reduces, crops and enlarges pictures.
#include "tools/pxl/pictures/resize.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

namespace pxl {
namespace {

constexpr std::int64_t kChannels = 4;

// A picture whose channels are of the type.
template <typename Channel>
struct Plane {
  const Picture& picture;

  Channel At(std::int64_t x, std::int64_t y, std::int64_t channel) const {
    Channel value{};
    std::memcpy(&value, picture.Row(y) + (kChannels * x + channel) * std::int64_t{sizeof(Channel)},
                sizeof value);
    return value;
  }
};

template <typename Channel>
Channel Mean(std::int64_t sum, std::int64_t count) {
  return static_cast<Channel>((sum + count / 2) / count);
}
template <typename Channel>
Channel Mean(double sum, std::int64_t count) {
  return static_cast<Channel>(sum / static_cast<double>(count));
}

struct Square {
  std::int64_t left, top, right, bottom;
};

template <typename Channel>
Channel MeanOf(const Plane<Channel>& plane, const Square& square, std::int64_t channel) {
  std::conditional_t<std::is_integral_v<Channel>, std::int64_t, double> sum = 0;
  for (std::int64_t y = square.top; y < square.bottom; ++y) {
    for (std::int64_t x = square.left; x < square.right; ++x) sum += plane.At(x, y, channel);
  }
  return Mean<Channel>(sum, (square.right - square.left) * (square.bottom - square.top));
}

template <typename Channel>
void Reduce(const Picture& picture, std::int64_t factor, Picture& result) {
  const Plane<Channel> plane{picture};
  std::byte* to = result.pixels.data();
  for (std::int64_t y = 0; y < picture.header.height; y += factor) {
    for (std::int64_t x = 0; x < picture.header.width; x += factor) {
      const Square square = {x, y, std::min(x + factor, picture.header.width),
                             std::min(y + factor, picture.header.height)};
      for (std::int64_t k = 0; k < kChannels; ++k, to += sizeof(Channel)) {
        const Channel mean = MeanOf(plane, square, k);
        std::memcpy(to, &mean, sizeof mean);
      }
    }
  }
}

}  // namespace

std::int64_t ReductionTo(std::int64_t side, const PictureHeader& header) {
  return (std::max(header.width, header.height) + side - 1) / side;
}

Picture Reduced(const Picture& picture, std::int64_t factor) {
  const auto shorter = [factor](std::int64_t side) { return (side + factor - 1) / factor; };
  Picture result = NewPicture(shorter(picture.header.width), shorter(picture.header.height),
                              picture.header.samples);
  const auto reduce = picture.header.samples == SampleType::Integer8    ? Reduce<std::uint8_t>
                      : picture.header.samples == SampleType::Integer16 ? Reduce<std::uint16_t>
                                                                        : Reduce<float>;
  reduce(picture, factor, result);
  return result;
}

Picture Cropped(const Picture& picture, std::int64_t width, std::int64_t height) {
  Picture result = NewPicture(width, height, picture.header.samples);
  const std::int64_t left = (picture.header.width - width) / 2;
  const std::int64_t top = (picture.header.height - height) / 2;
  const auto bytes = static_cast<std::int64_t>(PixelBytes(picture.header.samples));
  for (std::int64_t y = 0; y < height; ++y) {
    std::memcpy(result.Rows().Row(y), picture.Row(top + y) + bytes * left, result.RowBytes());
  }
  return result;
}

Picture Enlarged(const Picture& picture, std::int64_t factor) {
  Picture result = NewPicture(picture.header.width * factor, picture.header.height * factor,
                              picture.header.samples);
  const auto bytes = static_cast<std::int64_t>(PixelBytes(picture.header.samples));
  for (std::int64_t y = 0; y < result.header.height; ++y) {
    const std::byte* from = picture.Row(y / factor);
    std::byte* to = result.Rows().Row(y);
    for (std::int64_t x = 0; x < result.header.width; ++x) {
      std::memcpy(to + bytes * x, from + bytes * (x / factor), static_cast<std::size_t>(bytes));
    }
  }
  return result;
}

Picture Fitted(const Picture& picture, std::int64_t side) {
  const std::int64_t factor = ReductionTo(side, picture.header);
  if (factor > 1) return Reduced(picture, factor);
  return Enlarged(picture, side / std::max(picture.header.width, picture.header.height));
}

}  // namespace pxl
