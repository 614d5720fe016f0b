// CopyBits where pixels do not change, with the sizes and scales that have separate
// code.
#include <algorithm>
#include <random>
#include <vector>

#include "tests/support/drawing/surfaces.h"

namespace {

// Wide enough for a few hundred rows to be more than a core's own cache.
constexpr int kLarge = 2400;

class KeptPixels : public Surfaces {
 protected:
  // A world of random bytes, padding included.
  GWorldPtr Any(int depth, const Rect& bounds) {
    GWorldPtr world = Make(static_cast<std::int16_t>(depth), bounds);
    std::uint8_t* pixels = PixelsOf(world);
    std::generate_n(pixels, Size(world), [this] { return static_cast<std::uint8_t>(any_()); });
    return world;
  }

  // Which source pixel a destination pixel shows, along one axis.
  static int Shown(int position, int from, int fromEnd, int to, int toEnd) {
    return from + (position - to) * (fromEnd - from) / (toEnd - to);
  }

  // All bytes that the destination has to have after a copy.
  static std::vector<std::uint8_t> Expected(GWorldPtr source, GWorldPtr destination,
                                            const Rect& from, const Rect& to) {
    std::vector<std::uint8_t> expected = Bytes(destination);
    const Rect bounds = MapOf(destination).bounds;
    const std::size_t bytes = MapOf(destination).pixelSize == 8 ? 1 : 4;
    const int left = std::max(to.left, bounds.left);
    const int right = std::min(to.right, bounds.right);
    for (int y = std::max(to.top, bounds.top); y < std::min(to.bottom, bounds.bottom); ++y) {
      const std::uint8_t* row = At(source, 0, Shown(y, from.top, from.bottom, to.top, to.bottom));
      std::uint8_t* drawn =
          &expected[static_cast<std::size_t>(At(destination, left, y) - PixelsOf(destination))];
      for (int x = left; x < right; ++x, drawn += bytes) {
        const int shown = Shown(x, from.left, from.right, to.left, to.right);
        std::memcpy(drawn, row + static_cast<std::size_t>(shown) * bytes, bytes);
      }
    }
    return expected;
  }

  static void Check(GWorldPtr source, GWorldPtr destination, const Rect& from, const Rect& to) {
    const auto expected = Expected(source, destination, from, to);
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination), &from, &to, 0,
             nullptr);
    ASSERT_EQ(QDE_Error(), 0);
    ASSERT_TRUE(Bytes(destination) == expected)
        << "from " << testing::PrintToString(from) << " to " << testing::PrintToString(to);
  }

  // All of one size to all of another.
  void CheckSizes(int depth, const Rect& from, const Rect& to) {
    GWorldPtr source = Any(depth, from);
    GWorldPtr destination = Any(depth, to);
    Check(source, destination, from, to);
    DisposeGWorld(destination);
    DisposeGWorld(source);
  }

 private:
  std::minstd_rand any_{20261122};
};

TEST_F(KeptPixels, AreCopiedWithAndWithoutGapsBetweenLargeRows) {
  CheckSizes(32, Sized(kLarge, 500), Sized(kLarge, 500));
  CheckSizes(32, Sized(kLarge + 1, 500), Sized(kLarge + 1, 500));
}

TEST_F(KeptPixels, AreCopiedToPartsOfLargeImages) {
  GWorldPtr source = Any(32, Sized(kLarge, 500));
  GWorldPtr destination = Any(32, Sized(kLarge + 40, 520));
  Check(source, destination, {3, 5, 495, kLarge - 2}, {13, 7, 505, kLarge});
  DisposeGWorld(destination);
  DisposeGWorld(source);
}

TEST_F(KeptPixels, AreScaledInLargeImages) {
  const Rect whole = Sized(kLarge, 600);
  CheckSizes(32, whole, Sized(kLarge / 2, 300));
  CheckSizes(32, Sized(kLarge / 2, 300), whole);
  CheckSizes(32, Sized(kLarge * 2 / 3, 400), whole);
  CheckSizes(32, whole, Sized(kLarge * 2 / 3, 400));
  CheckSizes(32, Sized(kLarge, 200), whole);
}

TEST_F(KeptPixels, AreHalvedAndDoubledAtAnyWidth) {
  for (int width = 1; width <= 140 && !HasFatalFailure(); ++width) {
    CheckSizes(32, Sized(2 * width, 6), Sized(width, 3));
    CheckSizes(32, Sized(width, 3), Sized(2 * width, 6));
    CheckSizes(8, Sized(width, 3), Sized(2 * width, 6));
  }
}

// The first and the last column drawn may be either of two that show the same.
TEST_F(KeptPixels, AreDoubledAndHalvedFromAnyColumnOn) {
  for (int cut = 0; cut < 8 && !HasFatalFailure(); ++cut) {
    GWorldPtr source = Any(32, Sized(70, 8));
    GWorldPtr destination = Any(32, Sized(120, 16));
    const auto left = static_cast<std::int16_t>(-cut);
    Check(source, destination, Sized(70, 8), {0, left, 16, static_cast<std::int16_t>(140 - cut)});
    Check(source, destination, Sized(70, 8), {0, left, 4, static_cast<std::int16_t>(35 - cut)});
    DisposeGWorld(destination);
    DisposeGWorld(source);
  }
}

TEST_F(KeptPixels, AreShiftedWithinALargeImage) {
  for (const int distance : {-3, 3}) {
    for (const int width : {kLarge, kLarge - 8}) {
      GWorldPtr world = Any(32, Sized(kLarge, 500));
      const auto to = static_cast<std::int16_t>(10 + distance);
      const auto right = static_cast<std::int16_t>(width);
      Check(world, world, {10, 0, 490, right},
            {to, 0, static_cast<std::int16_t>(490 + distance), right});
      DisposeGWorld(world);
    }
  }
}

}  // namespace
