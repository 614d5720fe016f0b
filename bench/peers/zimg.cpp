// zimg: planes of one channel, at full scale 65535. It wants each row on a
// vector's boundary.
#include <zimg.h>

#include <memory>
#include <stdexcept>

#include "bench/subjects/peers.h"
#include "bench/subjects/suited_picture.h"

namespace bench {
namespace {

constexpr std::size_t kAlignment = 64;

SuitedPicture Aligned(const Picture& picture) {
  constexpr int kPixels = 16;  // of the smallest size, to a vector
  const bool suits = reinterpret_cast<std::uintptr_t>(picture.pixels) % kAlignment == 0 &&
                     picture.rowBytes % kAlignment == 0;
  return {picture, suits, kPixels};
}

zimg_image_format FormatOf(const Picture& picture) {
  zimg_image_format format;
  zimg_image_format_default(&format, ZIMG_API_VERSION);
  format.width = static_cast<unsigned>(picture.width) * 4;
  format.height = static_cast<unsigned>(picture.height);
  format.pixel_type = picture.pixelBytes == 16  ? ZIMG_PIXEL_FLOAT
                      : picture.pixelBytes == 8 ? ZIMG_PIXEL_WORD
                                                : ZIMG_PIXEL_BYTE;
  format.depth = static_cast<unsigned>(picture.pixelBytes) * 2;
  format.color_family = ZIMG_COLOR_GREY;
  format.pixel_range = ZIMG_RANGE_FULL;
  return format;
}

struct FreeGraph {
  void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
};

struct Conversion {
  Conversion(const Picture& from, const Picture& to)
      : source(Aligned(from)), destination(Aligned(to)) {
    const zimg_image_format sourceFormat = FormatOf(from);
    const zimg_image_format destinationFormat = FormatOf(to);
    graph.reset(zimg_filter_graph_build(&sourceFormat, &destinationFormat, nullptr));
    if (graph == nullptr) throw std::runtime_error("zimg cannot convert these pictures");
    std::size_t size = 0;
    zimg_filter_graph_get_tmp_size(graph.get(), &size);
    const auto rows = static_cast<int>(size / kAlignment + 1);
    scratch = std::make_unique<OwnPicture>(int{kAlignment}, rows, 1);
  }

  void Run() const {
    zimg_image_buffer_const from{};
    from.version = ZIMG_API_VERSION;
    from.plane[0] = {source.View().pixels, static_cast<std::ptrdiff_t>(source.View().rowBytes),
                     ZIMG_BUFFER_MAX};
    zimg_image_buffer to{};
    to.version = ZIMG_API_VERSION;
    to.plane[0] = {destination.View().pixels,
                   static_cast<std::ptrdiff_t>(destination.View().rowBytes), ZIMG_BUFFER_MAX};
    zimg_filter_graph_process(graph.get(), &from, &to, scratch->View().pixels, nullptr, nullptr,
                              nullptr, nullptr);
  }

  SuitedPicture source;
  SuitedPicture destination;
  std::unique_ptr<zimg_filter_graph, FreeGraph> graph;
  std::unique_ptr<OwnPicture> scratch;
};

Work Convert(const Picture& from, const Picture& to) {
  const auto conversion = std::make_shared<Conversion>(from, to);
  return Repeat([conversion] { conversion->Run(); });
}

[[maybe_unused]] const bool kAdded = AddPeer("zimg", Operation::From8to16, Convert) &&
                                     AddPeer("zimg", Operation::From8toF, Convert) &&
                                     AddPeer("zimg", Operation::From16to8, Convert) &&
                                     AddPeer("zimg", Operation::FromFto8, Convert);

}  // namespace
}  // namespace bench
