// libvips, with one thread and without cached results. It writes into its own memory,
// which is then copied.
#include <vips/vips.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include "bench/subjects/peers.h"
#include "bench/subjects/suited_picture.h"

namespace bench {
namespace {

constexpr int kChannels = 4;

struct Unref {
  void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Image = std::unique_ptr<VipsImage, Unref>;

VipsBandFormat FormatOf(const Picture& picture) {
  if (picture.pixelBytes == 16) return VIPS_FORMAT_FLOAT;
  return picture.pixelBytes == 8 ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR;
}

void Check(bool good) {
  if (!good) throw std::runtime_error(vips_error_buffer());
}

void Start() {
  static const bool started = VIPS_INIT("pxl_bench") == 0;
  Check(started);
  vips_concurrency_set(1);
  vips_cache_set_max(0);
}

void Run(const Picture& from, const Picture& to, double scale, double offset) {
  const Image source(vips_image_new_from_memory(from.pixels, from.Bytes(), from.width, from.height,
                                                kChannels, FormatOf(from)));
  Check(source != nullptr);
  VipsImage* linear = nullptr;
  Check(vips_linear1(source.get(), &linear, scale, offset, nullptr) == 0);
  const Image scaled(linear);
  VipsImage* cast = nullptr;
  Check(vips_cast(scaled.get(), &cast, FormatOf(to), nullptr) == 0);
  const Image result(cast);
  std::size_t size = 0;
  void* pixels = vips_image_write_to_memory(result.get(), &size);
  Check(pixels != nullptr && size == to.UsedRowBytes() * to.Rows());
  for (int y = 0; y < to.height; ++y) {
    const auto* row =
        static_cast<const std::uint8_t*>(pixels) + to.UsedRowBytes() * static_cast<std::size_t>(y);
    std::memcpy(to.Row(y), row, to.UsedRowBytes());
  }
  g_free(pixels);
}

Prepare Convert(double scale, double offset) {
  return [=](const Picture& from, const Picture& to) {
    Start();
    const auto source = std::make_shared<SuitedPicture>(from, from.IsDense(), 1);
    return Repeat([=] { Run(source->View(), to, scale, offset); });
  };
}

[[maybe_unused]] const bool kAdded =
    AddPeer("libvips", Operation::From8to16, Convert(32768.0 / 255, 0.5)) &&
    AddPeer("libvips", Operation::From8toF, Convert(1.0 / 255, 0)) &&
    AddPeer("libvips", Operation::From16to8, Convert(255 / 32768.0, 0.5)) &&
    AddPeer("libvips", Operation::FromFto8, Convert(255, 0));

}  // namespace
}  // namespace bench
