// Blits between Worlds with frames.
#include <cmath>
#include <random>

#include "tests/support/host/whole.h"

using ::testing::IsEmpty;

namespace {

std::int32_t BlitLocked(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH) {
  const Locked source(sourceH);
  const Locked destination(destinationH);
  return PXL_Blit(sourceH, destinationH, nullptr, nullptr, 0);
}

constexpr int kWidth = 67;
constexpr int kHeight = 41;

template <typename Pixel, typename Random>
void Paint(PXL_WorldHandle worldH, Random random) {
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      for (auto& channel : PixelAt<Pixel>(worldH, x, y).channel) channel = random();
    }
  }
}

// Calls check(source pixel, destination pixel) for each pixel.
template <typename Source, typename Destination, typename Check>
void ForEachPair(PXL_WorldHandle sourceH, PXL_WorldHandle destinationH, Check check) {
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      for (int k = 0; k < 4; ++k) {
        check(PixelAt<Source>(sourceH, x, y).channel[k],
              PixelAt<Destination>(destinationH, x, y).channel[k]);
      }
    }
  }
}

}  // namespace

class Blit : public Whole {
 protected:
  std::mt19937 generator_{20261121};
  std::uint8_t AnyByte() { return static_cast<std::uint8_t>(generator_()); }
  std::uint16_t AnyWord() { return static_cast<std::uint16_t>(generator_()); }
  float AnyFloat() { return std::uniform_real_distribution<float>(-0.5F, 1.5F)(generator_); }
};

TEST_F(Blit, WidensAndNarrowsEightBitPixelsWithoutLoss) {
  PXL_WorldHandle from = Make(32, kWidth, kHeight);
  PXL_WorldHandle via = Make(64, kWidth, kHeight);
  PXL_WorldHandle to = Make(32, kWidth, kHeight);
  Paint<PXL_Pixel8>(from, [this] { return AnyByte(); });
  EXPECT_EQ(BlitLocked(from, via), PXL_Err_NONE);
  EXPECT_EQ(BlitLocked(via, to), PXL_Err_NONE);
  ForEachPair<PXL_Pixel8, PXL_Pixel16>(from, via, [](std::uint8_t c, std::uint16_t v) {
    // 254 becomes 32640, one more than the nearest value.
    ASSERT_EQ(v, c == 254 ? 32640 : std::lround(c * 32768.0 / 255.0));
  });
  ForEachPair<PXL_Pixel8, PXL_Pixel8>(
      from, to, [](std::uint8_t before, std::uint8_t after) { ASSERT_EQ(after, before); });
  Dispose(to);
  Dispose(via);
  Dispose(from);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Blit, WidensEightBitPixelsToFloats) {
  PXL_WorldHandle from = Make(32, kWidth, kHeight);
  PXL_WorldHandle to = Make(128, kWidth, kHeight);
  Paint<PXL_Pixel8>(from, [this] { return AnyByte(); });
  EXPECT_EQ(BlitLocked(from, to), PXL_Err_NONE);
  ForEachPair<PXL_Pixel8, PXL_PixelF>(
      from, to, [](std::uint8_t c, float v) { ASSERT_EQ(v, static_cast<float>(c / 255.0)); });
  Dispose(to);
  Dispose(from);
}

TEST_F(Blit, TruncatesFloatsWhereThePixelFunctionRounds) {
  PXL_WorldHandle from = Make(128, kWidth, kHeight);
  PXL_WorldHandle to = Make(32, kWidth, kHeight);
  Paint<PXL_PixelF>(from, [this] { return AnyFloat(); });
  PixelAt<PXL_PixelF>(from, 0, 0) = {{0.5F, NAN, INFINITY, -INFINITY}};
  EXPECT_EQ(BlitLocked(from, to), PXL_Err_NONE);
  const PXL_Pixel8 first = PixelAt<PXL_Pixel8>(to, 0, 0);
  EXPECT_EQ(first.channel[0], 127);
  EXPECT_EQ(first.channel[1], 0);
  EXPECT_EQ(first.channel[2], 255);
  EXPECT_EQ(first.channel[3], 0);
  PixelAt<PXL_PixelF>(from, 0, 0) = {{0, 0, 0, 0}};
  PixelAt<PXL_Pixel8>(to, 0, 0) = {{0, 0, 0, 0}};
  ForEachPair<PXL_PixelF, PXL_Pixel8>(from, to, [](float c, std::uint8_t v) {
    const float product = c * 255.0F;
    ASSERT_EQ(v, static_cast<int>(std::floor(std::fmax(0.0F, std::fmin(255.0F, product)))));
  });
  Dispose(to);
  Dispose(from);
}

TEST_F(Blit, WrapsSixteenBitValuesBeyondFullScale) {
  PXL_WorldHandle from = Make(64, kWidth, kHeight);
  PXL_WorldHandle to = Make(32, kWidth, kHeight);
  Paint<PXL_Pixel16>(from, [this] { return AnyWord(); });
  EXPECT_EQ(BlitLocked(from, to), PXL_Err_NONE);
  ForEachPair<PXL_Pixel16, PXL_Pixel8>(from, to, [](std::uint16_t c, std::uint8_t v) {
    ASSERT_EQ(v, static_cast<int>(std::floor(c * 255.0 / 32768.0 + 0.5)) % 256);
  });
  Dispose(to);
  Dispose(from);
}

TEST_F(Blit, CopiesWorldsOfTheSameDepth) {
  PXL_WorldHandle from = Make(128, kWidth, kHeight);
  PXL_WorldHandle to = Make(128, kWidth, kHeight);
  Paint<PXL_PixelF>(from, [this] { return AnyFloat(); });
  EXPECT_EQ(BlitLocked(from, to), PXL_Err_NONE);
  ForEachPair<PXL_PixelF, PXL_PixelF>(from, to,
                                      [](float before, float after) { ASSERT_EQ(after, before); });
  Dispose(to);
  Dispose(from);
}

TEST_F(Blit, ReportsAPairThatItDoesNotHandle) {
  PXL_WorldHandle from = Make(128, kWidth, kHeight, PXL_Flag_CLEAR);
  PXL_WorldHandle to = Make(64, kWidth, kHeight, PXL_Flag_CLEAR);
  EXPECT_EQ(BlitLocked(from, to), PXL_Err_NONE);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70042U);
  EXPECT_THAT(Reports()[0].text,
              ::testing::HasSubstr("unexpected bitdepth combination in PXLp_Blit64()"));
  Dispose(to);
  Dispose(from);
}
