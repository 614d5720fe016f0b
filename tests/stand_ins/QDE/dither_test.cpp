// Dithering: properties of the result rather than single pixels.
#include <set>

#include "tests/stand_ins/QDE/copying.h"

namespace {

class Dithering : public Copying {
 protected:
  static constexpr int kDither = 64;
  static constexpr int kSize = 64;

  void FillPixels(GWorldPtr world, std::uint32_t rgb) { Draw(Pixels({rgb}), world, 0); }
  // A row and a column more of red and of blue.
  GWorldPtr Slope() {
    GWorldPtr world = World(32, kSize, kSize);
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) {
        const std::uint8_t pixel[] = {0, static_cast<std::uint8_t>(50 + 2 * x), 128,
                                      static_cast<std::uint8_t>(50 + 2 * y)};
        std::memcpy(At(world, x, y), pixel, 4);
      }
    }
    return world;
  }
  static std::set<int> Used(GWorldPtr world) {
    const auto bytes = Bytes(world);
    return {bytes.begin(), bytes.end()};
  }
  // The sum of a component over a square of an 8- or 32-bit world.
  int Sum(GWorldPtr world, int component, int left, int top, int size) {
    GWorldPtr pixels = World(32, kSize, kSize);
    Draw(world, pixels, 0);
    int sum = 0;
    for (int y = top; y < top + size; ++y) {
      for (int x = left; x < left + size; ++x) sum += At(pixels, x, y)[component];
    }
    return sum;
  }
};

TEST_F(Dithering, ShowsColorsOfTheTableAsTheyAre) {
  GWorldPtr indices = World(8, 16, 16);
  for (std::size_t i = 0; i < 256; ++i) PixelsOf(indices)[i] = static_cast<std::uint8_t>(i);
  GWorldPtr pixels = World(32, 16, 16);
  Draw(indices, pixels, 0);
  GWorldPtr back = World(8, 16, 16);
  Draw(pixels, back, kDither);
  EXPECT_EQ(Bytes(back), Bytes(indices));
}

// The errors of neighbours do not show in a flat area of a table's colour.
TEST_F(Dithering, KeepsFlatAreasCleanBesideOthers) {
  GWorldPtr source = Slope();
  for (int y = 20; y < 44; ++y) std::memset(At(source, 20, y), 0xCC, 24 * 4);
  GWorldPtr destination = World(8, kSize, kSize);
  Draw(source, destination, kDither);
  for (int y = 20; y < 44; ++y) {
    for (int x = 20; x < 44; ++x) ASSERT_EQ(*At(destination, x, y), 43) << x << ", " << y;
  }
}

TEST_F(Dithering, MixesTheNeighboursOfAColor) {
  GWorldPtr source = World(32, kSize, kSize);
  GWorldPtr destination = World(8, kSize, kSize);
  FillPixels(source, 0x7F7F7F);
  Draw(source, destination, 0);
  EXPECT_EQ(Used(destination), std::set{250});
  Draw(source, destination, kDither);
  EXPECT_EQ(Used(destination), (std::set{249, 250}));  // 888888 and 777777
}

TEST_F(Dithering, KeepsTheMeanOfAnArea) {
  GWorldPtr source = Slope();
  GWorldPtr destination = World(8, kSize, kSize);
  Draw(source, destination, kDither);
  constexpr int kPart = 16;
  for (int top = 0; top < kSize; top += kPart) {
    for (int left = 0; left < kSize; left += kPart) {
      for (int component = 1; component < 4; ++component) {
        const int wanted = Sum(source, component, left, top, kPart);
        const int got = Sum(destination, component, left, top, kPart);
        // The error that crosses the edges is about a pixel's error along them.
        EXPECT_NEAR(got, wanted, 4 * kPart * kPart) << left << ", " << top;
      }
    }
  }
}

TEST_F(Dithering, ComesOutTheSameEachTime) {
  GWorldPtr source = Slope();
  GWorldPtr first = World(8, kSize, kSize);
  GWorldPtr second = World(8, kSize, kSize);
  Fill(second, 0x55);
  Draw(source, first, kDither);
  Draw(source, second, kDither);
  EXPECT_EQ(Bytes(first), Bytes(second));
}

// Copies downwards within a world would otherwise go from the bottom up.
TEST_F(Dithering, ComesOutTheSameWithinAWorld) {
  const auto draw = [](GWorldPtr source, GWorldPtr destination) {
    const Rect from = Sized(kSize, kSize - 5);
    const Rect to = {5, 0, kSize, kSize};
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(destination), &from, &to,
             32 + kDither, nullptr);
    EXPECT_EQ(QDE_Error(), 0);
  };
  SetColor(QDE_PortColor_OP, 0x808080);
  GWorldPtr world = World(8, kSize, kSize);
  Draw(Slope(), world, kDither);
  GWorldPtr apart = World(8, kSize, kSize);
  Draw(world, apart, 0);
  draw(world, apart);
  draw(world, world);
  EXPECT_EQ(Bytes(world), Bytes(apart));
}

TEST_F(Dithering, WorksBetweenTables) {
  QDE_ColorTable table{1024, 0, 1, {{0, {0, 0, 0}}, {1, {0xFFFF, 0xFFFF, 0xFFFF}}}};
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(kSize, kSize);
  GWorldPtr destination = nullptr;
  ASSERT_EQ(NewGWorld(&destination, 8, &bounds, &master, nullptr, 0), 0);
  Keep(destination);
  GWorldPtr source = World(8, kSize, kSize);
  Fill(source, 253);  // 222222
  Draw(source, destination, 0);
  EXPECT_EQ(Used(destination), std::set{0});
  Draw(source, destination, kDither);
  const auto bytes = Bytes(destination);
  const auto whites = std::count(bytes.begin(), bytes.end(), 1);
  EXPECT_NEAR(static_cast<double>(whites), kSize * kSize * 0x22 / 255.0, kSize);
}

TEST_F(Dithering, DoesNothingTo32Bits) {
  GWorldPtr source = Slope();
  GWorldPtr plain = World(32, kSize, kSize);
  GWorldPtr dithered = World(32, kSize, kSize);
  for (const int mode : {0, 1, 33, 37}) {
    Fill(plain, 0x35);
    Fill(dithered, 0x35);
    Draw(source, plain, mode);
    Draw(source, dithered, mode + kDither);
    EXPECT_EQ(Bytes(dithered), Bytes(plain)) << mode;
  }
}

}  // namespace
