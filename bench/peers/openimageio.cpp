// OpenImageIO: 16-bit channels at full scale 65535.
#include <OpenImageIO/imageio.h>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

OIIO::TypeDesc TypeOf(const Picture& picture) {
  if (picture.pixelBytes == 16) return OIIO::TypeDesc::FLOAT;
  return picture.pixelBytes == 8 ? OIIO::TypeDesc::UINT16 : OIIO::TypeDesc::UINT8;
}

Work Convert(const Picture& from, const Picture& to) {
  const int channels = from.width * 4;
  return Repeat([=] {
    for (int y = 0; y < from.height; ++y) {
      OIIO::convert_pixel_values(TypeOf(from), from.Row(y), TypeOf(to), to.Row(y), channels);
    }
  });
}

[[maybe_unused]] const bool kAdded = AddPeer("OpenImageIO", Operation::From8to16, Convert) &&
                                     AddPeer("OpenImageIO", Operation::From8toF, Convert) &&
                                     AddPeer("OpenImageIO", Operation::From16to8, Convert) &&
                                     AddPeer("OpenImageIO", Operation::FromFto8, Convert);

}  // namespace
}  // namespace bench
