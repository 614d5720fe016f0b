// libavutil's pool of buffers.
extern "C" {
#include <libavutil/buffer.h>
}

#include <memory>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

struct FreePool {
  void operator()(AVBufferPool* pool) const { av_buffer_pool_uninit(&pool); }
};

Work MakeFrame(int width, int height) {
  const std::size_t bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 16;
  const std::shared_ptr<AVBufferPool> pool(av_buffer_pool_init(bytes, nullptr), FreePool());
  return Repeat([pool] {
    AVBufferRef* buffer = av_buffer_pool_get(pool.get());
    av_buffer_unref(&buffer);
  });
}

[[maybe_unused]] const bool kAdded = AddFramePeer("AVBufferPool", MakeFrame);

}  // namespace
}  // namespace bench
