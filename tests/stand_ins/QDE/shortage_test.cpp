// Memory that runs out anywhere within a call.
#include <cstring>
#include <vector>

#include "tests/support/drawing/surfaces.h"
#include "tests/support/memory/scarce_memory.h"

namespace {

class Shortage : public Surfaces {
 protected:
  ~Shortage() override { scarce::End(); }

  // Repeats the call with more and more memory until it succeeds; returns the number
  // of failures. `check` is called after each failure.
  template <typename Call, typename Check>
  static int CountFailures(Call call, Check check) {
    for (int count = 0;; ++count) {
      scarce::Begin(count);
      const std::int16_t error = call();
      scarce::End();
      if (error == 0) return count;
      EXPECT_EQ(error, -108);
      check();
      if (count > 100 || HasFailure()) return count;
    }
  }
};

TEST_F(Shortage, InNewGWorldLeavesNothingBehind) {
  const Rect bounds = Sized(4, 4);
  const std::uint64_t handles = K_CountHandles();
  GWorldPtr world = nullptr;
  const int failures =
      CountFailures([&] { return NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0); },
                    [&] {
                      EXPECT_EQ(world, nullptr);
                      EXPECT_EQ(QDE_CountWorlds(), 0U);
                      EXPECT_EQ(K_CountHandles(), handles);
                    });
  EXPECT_GT(failures, 3);
  ASSERT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

TEST_F(Shortage, InUpdateGWorldLeavesTheWorldAsItWas) {
  GWorldPtr world = Make(8, Sized(4, 4));
  Fill(world, 0x55);
  const PixMap before = MapOf(world);
  const int failures = CountFailures(
      [&] {
        const std::uint32_t result = Update(&world, 32, Sized(9, 9), QDE_Flag_STRETCH_PIX);
        EXPECT_EQ(QDE_Error(), (result & kFailedBit) != 0 ? static_cast<std::int32_t>(result) : 0);
        return QDE_Error();
      },
      [&] {
        EXPECT_TRUE(MapOf(world) == before);
        EXPECT_EQ(Bytes(world), std::vector<std::uint8_t>(64, 0x55));
      });
  EXPECT_GT(failures, 3);
  EXPECT_EQ(MapOf(world).pixelSize, 32);
  DisposeGWorld(world);
}

TEST_F(Shortage, InCopyBitsDrawsNothing) {
  GWorldPtr world = Make(8, Sized(8, 8));
  std::uint8_t* pixels = PixelsOf(world);
  for (std::size_t i = 0; i < Size(world); ++i) pixels[i] = static_cast<std::uint8_t>(i);
  const auto before = Bytes(world);
  const Rect from = Sized(5, 5);
  const Rect to = Sized(8, 8);
  const int failures = CountFailures(
      [&] {
        const BitMap* bits = GetPortBitMapForCopyBits(world);
        CopyBits(bits, bits, &from, &to, 0, nullptr);
        return QDE_Error();
      },
      [&] { EXPECT_EQ(Bytes(world), before); });
  EXPECT_GT(failures, 1);
  EXPECT_NE(Bytes(world), before);
  DisposeGWorld(world);
}

// With a table that was not drawn to before.
TEST_F(Shortage, InCopyBitsToNewColorsDrawsNothing) {
  QDE_ColorTable table{20261, 0, 1, {{0, {0x1111, 0, 0}}, {1, {0, 0x2222, 0}}}};
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(8, 8);
  GWorldPtr indices = nullptr;
  ASSERT_EQ(NewGWorld(&indices, 8, &bounds, &master, nullptr, 0), 0);
  Fill(indices, 1);
  GWorldPtr pixels = Make(32, bounds);
  Fill(pixels, 0);
  const auto before = Bytes(indices);
  const int failures = CountFailures(
      [&] {
        CopyBits(GetPortBitMapForCopyBits(pixels), GetPortBitMapForCopyBits(indices), &bounds,
                 &bounds, 39 + 64, nullptr);
        return QDE_Error();
      },
      [&] { EXPECT_EQ(Bytes(indices), before); });
  EXPECT_GT(failures, 5);
  EXPECT_EQ(*At(indices, 7, 7), 0);
  DisposeGWorld(pixels);
  DisposeGWorld(indices);
}

TEST_F(Shortage, InNewGWorldWithColorsLeavesNothingBehind) {
  QDE_ColorTable table{20261, 0, 0, {{0, {0, 0, 0}}}};
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(4, 4);
  GWorldPtr world = nullptr;
  const int failures =
      CountFailures([&] { return NewGWorld(&world, 8, &bounds, &master, nullptr, 0); },
                    [&] { EXPECT_EQ(QDE_CountWorlds(), 0U); });
  EXPECT_GT(failures, 4);
  DisposeGWorld(world);
}

}  // namespace
