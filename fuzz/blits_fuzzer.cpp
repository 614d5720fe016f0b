// Compares blits between Worlds of frames, and conversions of single pixels, with
// the formulas of the header.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "PXL.h"
#include "fuzz/bytes.h"
#include "fuzz/demand.h"

namespace {

using fuzz::Bytes;
using fuzz::Demand;

constexpr std::int32_t kDepths[] = {32, 64, 128};
constexpr std::uint32_t kLargestSide = 40;

// ---- Channels

// A channel of any width, by its bits.
using Bits = std::uint32_t;

Bits BitsOf(float value) {
  Bits bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  return bits;
}

float FloatOf(Bits bits) {
  float value = 0;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

Bits From8(Bits value, std::int32_t depth) {
  if (depth == 64) return (value * 32768 + 128) / 255;
  return BitsOf(static_cast<float>(static_cast<double>(value) * (1.0 / 255.0)));
}

Bits From16To8(Bits value) {
  return (value * 255 + 16384) >> 15 & 0xFF;
}

// The rule of blits: values are truncated, and NaN becomes 0.
Bits FromFloatTo8(Bits bits) {
  const float value = FloatOf(bits);
  if (!(value > 0.0F)) return 0;
  return value >= 1.0F ? 255 : static_cast<Bits>(value * 255.0F);
}

Bits Rounded(float value, float scale) {
  if (!(value > 0.0F)) return 0;
  return static_cast<Bits>(std::floor(double{std::fmin(value, 1.0F) * scale} + 0.5));
}

Bits Clipped(Bits bits) {
  const float value = FloatOf(bits);
  if (value < 0.0F) return BitsOf(0.0F);
  return value > 1.0F ? BitsOf(1.0F) : bits;
}

// ---- Worlds

struct Shape {
  std::int32_t depth;
  std::int16_t width, height;
};

class Frame {
 public:
  explicit Frame(const Shape& shape) : shape_(shape) {
    const Rect rect = {0, 0, shape.height, shape.width};
    Demand(PXL_NewWorld(nullptr, PXL_Flag_NO_PLATFORM, &rect, shape.depth, 0, nullptr, &worldH_) ==
               PXL_Err_NONE,
           "a small World cannot be made");
    Demand(PXL_LockPixels(0, worldH_, nullptr) == PXL_Err_NONE, "a World cannot be locked");
  }
  Frame(const Frame&) = delete;
  Frame& operator=(const Frame&) = delete;
  ~Frame() {
    PXL_UnlockPixels(worldH_);
    Demand(PXL_DisposeWorld(worldH_) == PXL_Err_NONE, "a World cannot be disposed of");
  }

  [[nodiscard]] PXL_WorldHandle handle() const { return worldH_; }
  [[nodiscard]] const Shape& shape() const { return shape_; }

  void Fill(const std::string& pattern) {
    unsigned char* pixels = Pixels();
    for (std::size_t i = 0; i < Size(); ++i) {
      const std::size_t round = i / pattern.size();
      pixels[i] =
          static_cast<unsigned char>(static_cast<std::size_t>(pattern[i % pattern.size()]) + round);
    }
  }
  [[nodiscard]] std::vector<unsigned char> Content() const { return {Pixels(), Pixels() + Size()}; }

  // Where a channel is, in all of the rows.
  [[nodiscard]] std::size_t OffsetOf(int x, int y, int channel) const {
    const auto bytes = static_cast<std::size_t>(shape_.depth / 32);
    return RowBytes() * static_cast<std::size_t>(y) +
           bytes * static_cast<std::size_t>(x * 4 + channel);
  }

 private:
  [[nodiscard]] unsigned char* Pixels() const {
    return static_cast<unsigned char*>((*worldH_)->pixels.baseAddr);
  }
  [[nodiscard]] std::size_t RowBytes() const {
    return static_cast<std::size_t>((*worldH_)->pixels.rowBytes);
  }
  [[nodiscard]] std::size_t Size() const {
    return RowBytes() * static_cast<std::size_t>(shape_.height);
  }

  Shape shape_;
  PXL_WorldHandle worldH_ = nullptr;
};

Bits Channel(const std::vector<unsigned char>& content, std::size_t offset, std::int32_t depth) {
  Bits bits = 0;
  std::memcpy(&bits, &content[offset], static_cast<std::size_t>(depth / 32));
  return bits;
}

Bits Converted(Bits bits, std::int32_t from, std::int32_t to) {
  if (from == to) return bits;
  if (from == 32) return From8(bits, to);
  return from == 64 ? From16To8(bits) : FromFloatTo8(bits);
}

std::vector<unsigned char> Expected(const Frame& source, const Frame& destination) {
  const std::vector<unsigned char> from = source.Content();
  std::vector<unsigned char> to = destination.Content();
  const Shape& shape = destination.shape();
  for (int y = 0; y < shape.height; ++y) {
    for (int i = 0; i < shape.width * 4; ++i) {
      const Bits bits = Channel(from, source.OffsetOf(i / 4, y, i % 4), source.shape().depth);
      const Bits result = Converted(bits, source.shape().depth, shape.depth);
      std::memcpy(&to[destination.OffsetOf(i / 4, y, i % 4)], &result,
                  static_cast<std::size_t>(shape.depth / 32));
    }
  }
  return to;
}

Shape TakeShape(Bytes& bytes) {
  return {kDepths[bytes.Below(std::size(kDepths))],
          static_cast<std::int16_t>(1 + bytes.Below(kLargestSide)),
          static_cast<std::int16_t>(1 + bytes.Below(kLargestSide))};
}

// Pairs of 32 bits are the drawing layer's, which knows no frames.
void CheckBlit(Bytes& bytes) {
  Shape from = TakeShape(bytes);
  Shape to = TakeShape(bytes);
  if (from.depth == 32 && to.depth == 32) to.depth = 64;
  if (bytes.Byte() % 8 != 0) to = {to.depth, from.width, from.height};
  Frame source(from);
  Frame destination(to);
  const std::string pattern = "p" + bytes.Rest();
  source.Fill(pattern);
  destination.Fill("Z");
  const bool handled = from.depth == to.depth || from.depth == 32 || to.depth == 32;
  const bool same = from.width == to.width && from.height == to.height;
  const std::vector<unsigned char> expected =
      handled && same ? Expected(source, destination) : destination.Content();
  const std::int32_t status = PXL_Blit(source.handle(), destination.handle(), nullptr, nullptr, 0);
  Demand(status == (handled && !same ? PXL_Err_REFUSED : PXL_Err_NONE), "the status of a blit");
  Demand(destination.Content() == expected, "a blit that gives something else");
}

// ---- Single pixels

void CheckPixels(Bytes& bytes) {
  PXL_Pixel8 p8{};
  PXL_Pixel16 p16{};
  PXL_PixelF pF{};
  for (int c = 0; c < 4; ++c) {
    p8.channel[c] = bytes.Byte();
    p16.channel[c] = bytes.Take<std::uint16_t>();
    pF.channel[c] = FloatOf(bytes.Take<Bits>());
  }
  PXL_Pixel16 to16{};
  PXL_PixelF toF{};
  PXL_Pixel8 to8{};
  PXL_PixelF from16{};
  PXL_Pixel8 floatTo8{};
  PXL_Pixel16 floatTo16{};
  PXL_PixelF clipped = pF;
  PXL_Pixel8to16(&p8, &to16);
  PXL_Pixel8toF(&p8, &toF);
  PXL_Pixel16to8(&p16, &to8);
  PXL_Pixel16toF(&p16, &from16);
  PXL_PixelFto8(&pF, &floatTo8);
  PXL_PixelFto16(&pF, &floatTo16);
  PXL_ClipPixelF(&clipped);
  for (int c = 0; c < 4; ++c) {
    const float value = pF.channel[c];
    Demand(to16.channel[c] == From8(p8.channel[c], 64), "8 to 16 bits");
    Demand(BitsOf(toF.channel[c]) == From8(p8.channel[c], 128), "8 bits to float");
    Demand(to8.channel[c] == From16To8(p16.channel[c]), "16 to 8 bits");
    Demand(from16.channel[c] == static_cast<float>(p16.channel[c]) / 32768.0F, "16 bits to float");
    Demand(floatTo8.channel[c] == Rounded(value, 255.0F), "float to 8 bits");
    Demand(floatTo16.channel[c] == Rounded(value, 32768.0F), "float to 16 bits");
    Demand(BitsOf(clipped.channel[c]) == Clipped(BitsOf(value)), "a clipped float");
  }
}

bool Begin() {
  fuzz::SilenceLibraries();
  return PXL_Birth(0) == PXL_Err_NONE;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool born = Begin();
  Demand(born, "the module cannot be born");
  Bytes bytes(data, size);
  if (bytes.Byte() % 4 == 0) {
    CheckPixels(bytes);
  } else {
    CheckBlit(bytes);
  }
  return 0;
}
