// pixman: images over the pictures' own pixels. Deeper pixels go as several of
// 32 bits.
#include <pixman.h>

#include <memory>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

using Image = std::shared_ptr<pixman_image_t>;

int Width32(const Picture& picture) {
  return picture.width * picture.pixelBytes / 4;
}

std::uint32_t* Words(const Picture& picture) {
  return reinterpret_cast<std::uint32_t*>(picture.pixels);
}

Image ImageOf(const Picture& picture) {
  return {pixman_image_create_bits(PIXMAN_a8r8g8b8, Width32(picture), picture.height,
                                   Words(picture), static_cast<int>(picture.rowBytes)),
          pixman_image_unref};
}

Work Composite(const Image& source, const Image& destination, const Picture& to) {
  const int width = Width32(to);
  return Repeat([=] {
    pixman_image_composite32(PIXMAN_OP_SRC, source.get(), nullptr, destination.get(), 0, 0, 0, 0, 0,
                             0, width, to.height);
  });
}

Work Copy(const Picture& from, const Picture& to) {
  return Composite(ImageOf(from), ImageOf(to), to);
}

Work Fill(const Picture&, const Picture& to) {
  const int stride = static_cast<int>(to.rowBytes / 4);
  return Repeat([=] { pixman_fill(Words(to), stride, 32, 0, 0, to.width, to.height, kFillWord); });
}

Work Scale(const Picture& from, const Picture& to) {
  const Image source = ImageOf(from);
  pixman_transform_t transform;
  pixman_transform_init_scale(&transform, pixman_int_to_fixed(from.width) / to.width,
                              pixman_int_to_fixed(from.height) / to.height);
  pixman_image_set_transform(source.get(), &transform);
  pixman_image_set_filter(source.get(), PIXMAN_FILTER_NEAREST, nullptr, 0);
  return Composite(source, ImageOf(to), to);
}

[[maybe_unused]] const bool kAdded = AddPeer("pixman", Operation::Copy, Copy) &&
                                     AddPeer("pixman", Operation::Fill, Fill) &&
                                     AddPeer("pixman", Operation::HalveNearest, Scale) &&
                                     AddPeer("pixman", Operation::DoubleNearest, Scale);

}  // namespace
}  // namespace bench
