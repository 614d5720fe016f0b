// CopyBits against the reference, with everything chosen at random.
#include <iostream>
#include <random>

#include "reference_copy.h"
#include "surfaces.h"

namespace {

using reference::Picture;

class RandomCopies : public Surfaces {
 protected:
  RandomCopies() { std::cout << "seed " << seed_ << "\n"; }

  int Between(int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(generator_);
  }
  bool Sometimes() { return Between(0, 3) == 0; }

  Rect AnyRect(int most) {
    const int left = Between(-20, 30);
    const int top = Between(-20, 30);
    return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
            static_cast<std::int16_t>(top + Between(1, most)),
            static_cast<std::int16_t>(left + Between(1, most))};
  }
  // A rectangle that has to do with the bounds, sometimes larger or empty.
  Rect AnyPart(const Rect& bounds) {
    const int margin = Sometimes() ? 9 : 0;
    const int left = Between(bounds.left - margin, bounds.right);
    const int top = Between(bounds.top - margin, bounds.bottom);
    return {static_cast<std::int16_t>(top), static_cast<std::int16_t>(left),
            static_cast<std::int16_t>(Between(top, bounds.bottom + margin)),
            static_cast<std::int16_t>(Between(left, bounds.right + margin))};
  }
  static Rect OfSize(const Rect& place, const Rect& size) {
    return {place.top, place.left, static_cast<std::int16_t>(place.top + size.bottom - size.top),
            static_cast<std::int16_t>(place.left + size.right - size.left)};
  }

  GWorldPtr AnyWorld() {
    const bool indexed = Between(0, 1) == 0;
    GWorldPtr world = Make(indexed ? 8 : 32, AnyRect(24));
    Scribble(world);
    if (!indexed) QDE_SetGWorld32PixmapFormat(world, Between(0, 1));
    return world;
  }
  // Padding is drawn too, so that a write there shows.
  void Scribble(GWorldPtr world) {
    std::uint8_t* pixels = PixelsOf(world);
    for (std::size_t i = 0; i < Size(world); ++i) {
      pixels[i] = static_cast<std::uint8_t>(generator_());
    }
  }

  static int FormatOf(GWorldPtr world) {
    std::int32_t format = 0;
    QDE_GetGWorld32PixmapFormat(world, &format);
    return format;
  }
  static Picture PictureOf(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    const int depth = MapOf(world).pixelSize;
    Picture picture{bounds, depth, FormatOf(world), {}};
    for (int y = bounds.top; y < bounds.bottom; ++y) {
      const std::uint8_t* row = At(world, bounds.left, y);
      picture.bytes.insert(picture.bytes.end(), row,
                           row + std::ptrdiff_t{bounds.right - bounds.left} * (depth / 8));
    }
    return picture;
  }
  static std::vector<std::uint8_t> PaddingOf(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    std::vector<std::uint8_t> padding;
    for (int y = bounds.top; y < bounds.bottom; ++y) {
      const std::uint8_t* row = At(world, bounds.left, y);
      const std::uint8_t* end = At(world, bounds.right, y);
      padding.insert(padding.end(), end, row + StrideOf(world));
    }
    return padding;
  }

  // Copies, and compares all of the destination.
  void Check(GWorldPtr source, GWorldPtr destination, const Rect& from, const Rect& to) {
    const Picture expected = reference::Copy(PictureOf(source), PictureOf(destination), from, to);
    const auto padding = PaddingOf(destination);
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination), &from, &to, 0,
             nullptr);
    ASSERT_EQ(QDE_Error(), 0);
    ASSERT_EQ(PictureOf(destination).bytes, expected.bytes)
        << "from " << testing::PrintToString(from) << " to " << testing::PrintToString(to);
    ASSERT_EQ(PaddingOf(destination), padding);
  }

 private:
  std::random_device::result_type seed_ = std::random_device()();
  std::mt19937 generator_{seed_};
};

constexpr int kRounds = 1500;

TEST_F(RandomCopies, BetweenWorldsShowWhatTheReferenceShows) {
  for (int round = 0; round < kRounds && !HasFatalFailure(); ++round) {
    GWorldPtr source = AnyWorld();
    GWorldPtr destination = AnyWorld();
    const Rect from = AnyPart(MapOf(source).bounds);
    const Rect to = AnyPart(MapOf(destination).bounds);
    Check(source, destination, from, Sometimes() ? OfSize(to, from) : to);
    DisposeGWorld(destination);
    DisposeGWorld(source);
  }
}

TEST_F(RandomCopies, WithinAWorldShowWhatTheReferenceShows) {
  for (int round = 0; round < kRounds && !HasFatalFailure(); ++round) {
    GWorldPtr world = AnyWorld();
    const Rect from = AnyPart(MapOf(world).bounds);
    const Rect to = AnyPart(MapOf(world).bounds);
    Check(world, world, from, Sometimes() ? to : OfSize(to, from));
    DisposeGWorld(world);
  }
}

}  // namespace
