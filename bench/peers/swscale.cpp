// swscale: 16-bit channels at full scale 65535; floats as one plane, since it has
// them only in grey.
extern "C" {
#include <libswscale/swscale.h>
}

#include <array>
#include <memory>
#include <stdexcept>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

struct Format {
  AVPixelFormat pixels;
  int pixelsOfAPixel;  // 4 where each channel counts as a pixel
};

constexpr Format kBytes = {AV_PIX_FMT_RGBA, 1};
constexpr Format kReversed = {AV_PIX_FMT_ABGR, 1};
constexpr Format kWords = {AV_PIX_FMT_RGBA64LE, 1};
constexpr Format kGrey = {AV_PIX_FMT_GRAY8, 4};
constexpr Format kFloats = {AV_PIX_FMT_GRAYF32LE, 4};

using Context = std::shared_ptr<SwsContext>;

Context ContextFor(const Picture& from, Format fromFormat, const Picture& to, Format toFormat) {
  SwsContext* context =
      sws_getContext(from.width * fromFormat.pixelsOfAPixel, from.height, fromFormat.pixels,
                     to.width * toFormat.pixelsOfAPixel, to.height, toFormat.pixels, SWS_POINT,
                     nullptr, nullptr, nullptr);
  if (context == nullptr) throw std::runtime_error("swscale cannot convert these pictures");
  return {context, sws_freeContext};
}

void Run(SwsContext* context, const Picture& from, const Picture& to) {
  const std::array<const std::uint8_t*, 4> sources = {from.pixels};
  const std::array<std::uint8_t*, 4> destinations = {to.pixels};
  const std::array<int, 4> sourceStrides = {static_cast<int>(from.rowBytes)};
  const std::array<int, 4> strides = {static_cast<int>(to.rowBytes)};
  sws_scale(context, sources.data(), sourceStrides.data(), 0, from.height, destinations.data(),
            strides.data());
}

Prepare Convert(Format fromFormat, Format toFormat) {
  return [=](const Picture& from, const Picture& to) {
    const Context context = ContextFor(from, fromFormat, to, toFormat);
    return Repeat([=] { Run(context.get(), from, to); });
  };
}

Work Reverse(const Picture&, const Picture& to) {
  return Convert(kBytes, kReversed)(to, to);
}

[[maybe_unused]] const bool kAdded =
    AddPeer("swscale", Operation::From8to16, Convert(kBytes, kWords)) &&
    AddPeer("swscale", Operation::From8toF, Convert(kGrey, kFloats)) &&
    AddPeer("swscale", Operation::From16to8, Convert(kWords, kBytes)) &&
    AddPeer("swscale", Operation::FromFto8, Convert(kFloats, kGrey)) &&
    AddPeer("swscale", Operation::ReverseBytes, Reverse) &&
    AddPeer("swscale", Operation::HalveNearest, Convert(kBytes, kBytes)) &&
    AddPeer("swscale", Operation::DoubleNearest, Convert(kBytes, kBytes));

}  // namespace
}  // namespace bench
