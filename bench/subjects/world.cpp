// Creates Worlds filled with random channels.
#include "bench/subjects/world.h"

#include <fmt/format.h>

#include <stdexcept>

namespace bench {
namespace {

// A fast generator: setting up should not take longer than measuring.
class Random {
 public:
  std::uint32_t Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::uint32_t>(state_ >> 32);
  }

 private:
  std::uint64_t state_ = 1;
};

template <typename Value, typename Draw>
void FillWith(const Picture& picture, Draw draw) {
  for (int y = 0; y < picture.height; ++y) {
    auto* values = reinterpret_cast<Value*>(picture.Row(y));
    const std::size_t count = picture.UsedRowBytes() / sizeof(Value);
    for (std::size_t i = 0; i < count; ++i) values[i] = draw();
  }
}

void FillWithRandom(const Picture& picture, int depth) {
  Random random;
  if (depth == PXL_Depth_128) {
    FillWith<float>(picture, [&] { return static_cast<float>(random.Next() >> 8) / 16777215.0F; });
  } else if (depth == PXL_Depth_64) {
    FillWith<std::uint16_t>(
        picture, [&] { return static_cast<std::uint16_t>(random.Next() % (32768U + 1)); });
  } else {
    FillWith<std::uint8_t>(picture, [&] { return static_cast<std::uint8_t>(random.Next() >> 24); });
  }
}

}  // namespace

PXL_WorldHandle MakeWorld(Kind kind, int depth, int width, int height, std::uint32_t flags) {
  if (kind == Kind::Frame && depth == PXL_Depth_32) flags |= PXL_Flag_NO_PLATFORM;
  const Rect bounds = Bounds(width, height);
  PXL_WorldHandle worldH = nullptr;
  const std::int32_t status = PXL_NewWorld(nullptr, flags, &bounds, depth, 0, nullptr, &worldH);
  if (status == 0) return worldH;
  throw std::runtime_error(
      fmt::format("no World of {} x {} at {} bits: error {}", width, height, depth, status));
}

World::World(Kind kind, int depth, int width, int height)
    : handle_(MakeWorld(kind, depth, width, height)) {
  PXL_LockPixels(0, handle_, nullptr);
  FillWithRandom(View(), depth);
}

World::~World() {
  PXL_UnlockPixels(handle_);
  PXL_DisposeWorld(handle_);
}

Picture World::View() const {
  auto* pixels = static_cast<std::uint8_t*>(PXLp_GetPixBaseAddr(handle_));
  const PXL_World& record = **handle_;
  return {pixels, static_cast<std::size_t>(record.pixels.rowBytes), record.width, record.height,
          record.depth / 8};
}

}  // namespace bench
