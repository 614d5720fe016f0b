// libyuv: 16-bit channels at full scale 65535; narrowing truncates.
#include <libyuv.h>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

int Stride(const Picture& picture) {
  return static_cast<int>(picture.rowBytes);
}

// Its strides of 16-bit channels count channels.
int Stride16(const Picture& picture) {
  return Stride(picture) / 2;
}

std::uint16_t* Channels16(const Picture& picture) {
  return reinterpret_cast<std::uint16_t*>(picture.pixels);
}

Work Widen(const Picture& from, const Picture& to) {
  return Repeat([=] {
    libyuv::ARGBToAR64(from.pixels, Stride(from), Channels16(to), Stride16(to), to.width,
                       to.height);
  });
}

Work Narrow(const Picture& from, const Picture& to) {
  return Repeat([=] {
    libyuv::AR64ToARGB(Channels16(from), Stride16(from), to.pixels, Stride(to), to.width,
                       to.height);
  });
}

Work Copy(const Picture& from, const Picture& to) {
  return Repeat([=] {
    libyuv::CopyPlane(from.pixels, Stride(from), to.pixels, Stride(to), to.width * to.pixelBytes,
                      to.height);
  });
}

Work Fill(const Picture&, const Picture& to) {
  return Repeat(
      [=] { libyuv::ARGBRect(to.pixels, Stride(to), 0, 0, to.width, to.height, kFillWord); });
}

Work Reverse(const Picture&, const Picture& to) {
  return Repeat([=] {
    libyuv::ARGBToBGRA(to.pixels, Stride(to), to.pixels, Stride(to), to.width, to.height);
  });
}

Work Scale(const Picture& from, const Picture& to) {
  return Repeat([=] {
    libyuv::ARGBScale(from.pixels, Stride(from), from.width, from.height, to.pixels, Stride(to),
                      to.width, to.height, libyuv::kFilterNone);
  });
}

[[maybe_unused]] const bool kAdded = AddPeer("libyuv", Operation::From8to16, Widen) &&
                                     AddPeer("libyuv", Operation::From16to8, Narrow) &&
                                     AddPeer("libyuv", Operation::Copy, Copy) &&
                                     AddPeer("libyuv", Operation::Fill, Fill) &&
                                     AddPeer("libyuv", Operation::ReverseBytes, Reverse) &&
                                     AddPeer("libyuv", Operation::HalveNearest, Scale) &&
                                     AddPeer("libyuv", Operation::DoubleNearest, Scale);

}  // namespace
}  // namespace bench
