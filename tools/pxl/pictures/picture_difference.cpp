// Compares two pictures of one size and type of samples.
#include "tools/pxl/pictures/picture_difference.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "tools/pxl/pictures/magnifier.h"

namespace pxl {
namespace {

constexpr std::size_t kChannels = 4;
constexpr std::size_t kAlpha = 0;

// In the order in which differences are reported.
struct Channel {
  std::size_t place;
  const char* name;
};
constexpr std::array<Channel, kChannels> kOfColours = {
    {{1, "red"}, {2, "green"}, {3, "blue"}, {kAlpha, "alpha"}}};
constexpr std::array<Channel, 2> kOfGreys = {{{1, "grey"}, {kAlpha, "alpha"}}};

// The distance of two samples.
struct Distance {
  std::uint64_t steps;
  double ofFullScale;
};

constexpr Distance kNone = {0, 0.0};
constexpr Distance kWithoutDistance = {std::numeric_limits<std::uint64_t>::max(),
                                       std::numeric_limits<double>::infinity()};

template <typename Integer>
Distance Between(Integer a, Integer b) {
  const int steps = std::abs(int{a} - int{b});
  return {static_cast<std::uint64_t>(steps),
          double{1} * steps / std::numeric_limits<Integer>::max()};
}

// The index of a float in the order of all, both zeros at 0.
std::int64_t Place(float value) {
  constexpr std::uint32_t kSign = 0x80000000;
  const auto bits = std::bit_cast<std::uint32_t>(value);
  const auto size = std::int64_t{bits & ~kSign};
  return (bits & kSign) != 0 ? -size : size;
}

Distance Between(float a, float b) {
  if (a == b || (std::isnan(a) && std::isnan(b))) return kNone;
  if (!std::isfinite(a) || !std::isfinite(b)) return kWithoutDistance;
  return {static_cast<std::uint64_t>(std::abs(Place(a) - Place(b))),
          std::fabs(double{a} - double{b})};
}

bool HasDistance(const Distance& distance) {
  return distance.steps != kWithoutDistance.steps;
}

template <typename Sample>
std::array<Sample, kChannels> PixelAt(const Picture& picture, std::int64_t x, std::int64_t y) {
  std::array<Sample, kChannels> pixel{};
  std::memcpy(pixel.data(), picture.Row(y) + sizeof pixel * static_cast<std::size_t>(x),
              sizeof pixel);
  return pixel;
}

// Calls visit(x, y, a, b) for each pixel, with samples of that type.
template <typename Sample, typename Visit>
void ForEachPixelOf(const Picture& a, const Picture& b, Visit visit) {
  for (std::int64_t y = 0; y < a.header.height; ++y) {
    for (std::int64_t x = 0; x < a.header.width; ++x) {
      visit(x, y, PixelAt<Sample>(a, x, y), PixelAt<Sample>(b, x, y));
    }
  }
}

template <typename Visit>
void ForEachPixel(const Picture& a, const Picture& b, Visit visit) {
  switch (a.header.samples) {
    case SampleType::Integer8:
      return ForEachPixelOf<std::uint8_t>(a, b, visit);
    case SampleType::Integer16:
      return ForEachPixelOf<std::uint16_t>(a, b, visit);
    case SampleType::Float:
      return ForEachPixelOf<float>(a, b, visit);
  }
}

class Count {
 public:
  explicit Count(std::uint64_t tolerance) : tolerance_(tolerance) {}

  template <typename Channels, typename Pixel>
  void Add(const Channels& channels, std::int64_t x, std::int64_t y, const Pixel& a,
           const Pixel& b) {
    const std::uint64_t before = result_.samples;
    for (const Channel& channel : channels) {
      const auto first = a[channel.place];
      const auto second = b[channel.place];
      if (Add(Between(first, second)) && !result_.first) {
        result_.first = {x, y, channel.name, double{1} * first, double{1} * second};
      }
    }
    if (result_.samples > before) ++result_.pixels;
  }

  const PictureDifference& Result() const { return result_; }

 private:
  // Whether the pair counts as different.
  bool Add(const Distance& distance) {
    if (HasDistance(distance)) {
      result_.mostSteps = std::max(result_.mostSteps, distance.steps);
      result_.largest = std::max(result_.largest, distance.ofFullScale);
    } else {
      ++result_.withoutDistance;
    }
    if (HasDistance(distance) && distance.steps <= tolerance_) return false;
    ++result_.samples;
    return true;
  }

  std::uint64_t tolerance_;
  PictureDifference result_;
};

// Bright enough to be visible on black.
constexpr long kDimmest = 64;

std::byte Shade(const Distance& distance, std::uint64_t tolerance, double factor) {
  if (!HasDistance(distance)) return std::byte{255};
  if (distance.steps <= tolerance) return std::byte{0};
  const double shade = std::min(distance.ofFullScale * factor, 1.0) * 255.0;
  return static_cast<std::byte>(std::max(std::lround(shade), kDimmest));
}

}  // namespace

PictureDifference Compare(const Picture& a, const Picture& b, std::uint64_t tolerance) {
  const bool grey = a.header.channels.grey && b.header.channels.grey;
  Count count(tolerance);
  ForEachPixel(a, b, [&](std::int64_t x, std::int64_t y, const auto& first, const auto& second) {
    if (grey) {
      count.Add(kOfGreys, x, y, first, second);
    } else {
      count.Add(kOfColours, x, y, first, second);
    }
  });
  return count.Result();
}

Picture PictureOf(const PictureDifference& difference, const Picture& a, const Picture& b,
                  std::uint64_t tolerance) {
  const double factor = MagnifierFor(difference.largest);
  Picture picture = NewPicture(a.header.width, a.header.height, SampleType::Integer8);
  ForEachPixel(a, b, [&](std::int64_t x, std::int64_t y, const auto& first, const auto& second) {
    const auto shade = [&](std::size_t place) {
      return Shade(Between(first[place], second[place]), tolerance, factor);
    };
    std::byte* pixel = picture.Rows().Row(y) + kChannels * static_cast<std::size_t>(x);
    pixel[kAlpha] = std::byte{255};
    for (std::size_t k = 1; k < kChannels; ++k) pixel[k] = std::max(shade(k), shade(kAlpha));
  });
  return picture;
}

}  // namespace pxl
