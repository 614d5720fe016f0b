// Blits between Worlds with surfaces, which the drawing layer does.
#include <cstring>
#include <iterator>
#include <random>

#include "tests/support/host/whole.h"

using ::testing::IsEmpty;

namespace {

constexpr int kWidth = 23;
constexpr int kHeight = 17;

std::uint32_t Word(PXL_WorldHandle worldH, int x, int y) {
  std::uint32_t word = 0;
  std::memcpy(&word, &PixelAt<PXL_Pixel8>(worldH, x, y), sizeof word);
  return word;
}

std::uint8_t Index(PXL_WorldHandle worldH, int x, int y) {
  return PixelAt<std::uint8_t>(worldH, x, y);
}

// A pixel of either depth.
std::uint32_t Pixel(PXL_WorldHandle worldH, int x, int y) {
  return Record(worldH).depth == 8 ? Index(worldH, x, y) : Word(worldH, x, y);
}

// A component of the standard colours.
int Component(int index, int component) {
  const QDE_RGBColor& rgb = (*QDE_StandardColors())->ctTable[index].rgb;
  const int components[] = {rgb.red, rgb.green, rgb.blue};
  return components[component] >> 8;
}

int Distance(int index, const PXL_Pixel8& pixel) {
  int sum = 0;
  for (int k = 0; k < 3; ++k) {
    const int difference = Component(index, k) - pixel.channel[k + 1];
    sum += difference * difference;
  }
  return sum;
}

}  // namespace

class Drawing : public Whole {
 protected:
  void Scribble(PXL_WorldHandle worldH) {
    auto* pixels = static_cast<std::uint8_t*>(PXLp_GetPixBaseAddr(worldH));
    const int bytes = Record(worldH).pixels.rowBytes * Record(worldH).height;
    for (int i = 0; i < bytes; ++i) pixels[i] = static_cast<std::uint8_t>(generator_());
  }
  PXL_WorldHandle MakeScribbled(std::int32_t depth, int width = kWidth, int height = kHeight) {
    PXL_WorldHandle worldH = MakeSurface(depth, width, height);
    Scribble(worldH);
    return worldH;
  }
  // PXL_Blit returns 0 in any case; the layer's error is the result.
  static std::int16_t Blit(PXL_WorldHandle source, PXL_WorldHandle destination,
                           const Rect* from = nullptr, const Rect* to = nullptr,
                           std::uint16_t mode = 0) {
    EXPECT_EQ(PXL_Blit(source, destination, from, to, mode), PXL_Err_NONE);
    return QDE_Error();
  }

  std::mt19937 generator_{20261121};
};

TEST_F(Drawing, CopiesPixelsOf32Bits) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeScribbled(32);
  EXPECT_EQ(Blit(from, to), 0);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) ASSERT_EQ(Word(to, x, y), Word(from, x, y));
  }
  Dispose(to);
  Dispose(from);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Drawing, CopiesLockedWorldsAsWell) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeScribbled(32);
  {
    const Locked source(from);
    const Locked destination(to);
    void* base = Record(to).pixels.baseAddr;
    EXPECT_EQ(Blit(from, to), 0);
    EXPECT_EQ(Record(to).pixels.baseAddr, base);
    EXPECT_EQ(Word(to, 5, 5), Word(from, 5, 5));
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, ReordersChannelsBetweenWorldsOfDifferentOrder) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeScribbled(32);
  EXPECT_EQ(PXL_SetChannelOrder(to, PXL_ChannelOrder_ALTERNATE), PXL_Err_NONE);
  EXPECT_EQ(Blit(from, to), 0);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      ASSERT_EQ(Word(to, x, y), __builtin_bswap32(Word(from, x, y)));
    }
  }
  // In the same order again, the pixels are the same.
  EXPECT_EQ(PXL_SetChannelOrder(to, PXL_ChannelOrder_STANDARD), PXL_Err_NONE);
  EXPECT_EQ(Word(to, 3, 4), Word(from, 3, 4));
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, LooksIndicesUpOnTheWayTo32Bits) {
  PXL_WorldHandle from = MakeScribbled(8);
  PXL_WorldHandle to = MakeScribbled(32);
  EXPECT_EQ(Blit(from, to), 0);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const PXL_Pixel8 pixel = PixelAt<PXL_Pixel8>(to, x, y);
      ASSERT_EQ(pixel.channel[0], 0);
      for (int k = 0; k < 3; ++k) {
        ASSERT_EQ(pixel.channel[k + 1], Component(Index(from, x, y), k));
      }
    }
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, FindsTheNearestIndicesOnTheWayTo8Bits) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeScribbled(8);
  EXPECT_EQ(Blit(from, to), 0);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const PXL_Pixel8 pixel = PixelAt<PXL_Pixel8>(from, x, y);
      const int chosen = Index(to, x, y);
      for (int other = 0; other < 256; ++other) {
        ASSERT_GE(Distance(other, pixel), Distance(chosen, pixel) + (other < chosen ? 1 : 0));
      }
    }
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, ScalesRectangles) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeSurface(32, 40, 40, PXL_Flag_CLEAR);
  const Rect source{2, 3, 12, 20};
  const Rect destination{1, 5, 34, 12};
  EXPECT_EQ(Blit(from, to, &source, &destination), 0);
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      const bool inside = y >= 1 && y < 34 && x >= 5 && x < 12;
      const std::uint32_t expected =
          inside ? Word(from, 3 + (x - 5) * 17 / 7, 2 + (y - 1) * 10 / 33) : 0;
      ASSERT_EQ(Word(to, x, y), expected) << x << ", " << y;
    }
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, FitsAWorldToAnotherSizeWithoutRectangles) {
  PXL_WorldHandle from = MakeScribbled(8, 4, 4);
  PXL_WorldHandle to = MakeSurface(8, {-10, 50, -2, 62});
  EXPECT_EQ(Blit(from, to), 0);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 12; ++x) ASSERT_EQ(Index(to, x, y), Index(from, x / 3, y / 2));
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, ScrollsWithinAWorld) {
  for (const std::int32_t depth : {8, 32}) {
    PXL_WorldHandle worldH = MakeScribbled(depth);
    PXL_WorldHandle before = MakeSurface(depth, kWidth, kHeight);
    EXPECT_EQ(Blit(worldH, before), 0);
    const Rect source{0, 0, kHeight - 3, kWidth - 2};
    const Rect destination{3, 2, kHeight, kWidth};
    EXPECT_EQ(Blit(worldH, worldH, &source, &destination), 0);
    for (int y = 3; y < kHeight; ++y) {
      for (int x = 2; x < kWidth; ++x) {
        ASSERT_EQ(Pixel(worldH, x, y), Pixel(before, x - 2, y - 3));
      }
    }
    Dispose(before);
    Dispose(worldH);
  }
}

TEST_F(Drawing, GivesPortAndDeviceBack) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeScribbled(8);
  GrafPtr port = nullptr;
  GetPort(&port);
  const GDHandle device = GetGDevice();
  MacSetPort(Record(from).gworld);
  SetGDevice(Record(from).gdevice);
  EXPECT_EQ(Blit(from, to), 0);
  GrafPtr after = nullptr;
  GetPort(&after);
  EXPECT_EQ(after, Record(from).gworld);
  EXPECT_EQ(GetGDevice(), Record(from).gdevice);
  MacSetPort(port);
  SetGDevice(device);
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, LeavesTheDestinationAloneWhenTheSourceIsPurged) {
  PXL_WorldHandle from = MakeSurface(32, kWidth, kHeight, PXL_Flag_PURGEABLE);
  PXL_WorldHandle to = MakeSurface(32, kWidth, kHeight, PXL_Flag_CLEAR);
  K_PurgeHandlesAndCompact();
  EXPECT_EQ(Blit(from, to), QDE_Err_PURGED);
  EXPECT_EQ(Word(to, 3, 3), 0U);
  EXPECT_EQ(Blit(to, from), QDE_Err_PURGED);
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, DrawsNothingWithoutASurface) {
  PXL_WorldHandle plain = Make(32, kWidth, kHeight, PXL_Flag_CLEAR);
  PXL_WorldHandle drawn = MakeScribbled(32);
  const std::uint32_t before = Word(drawn, 1, 1);
  EXPECT_EQ(Blit(plain, drawn), QDE_Err_PARAMETER);
  EXPECT_EQ(Word(drawn, 1, 1), before);
  EXPECT_EQ(Blit(drawn, plain), QDE_Err_PARAMETER);
  EXPECT_EQ(Word(plain, 1, 1), 0U);
  Dispose(drawn);
  Dispose(plain);
}

TEST_F(Drawing, DrawsInAllModes) {
  constexpr std::uint32_t kResults[] = {0xC86432, 0x404012, 0x53535B, 0x77DBDF, 0x379BCD,
                                        0x248884, 0xACACA4, 0xECECB6, 0x64C896, 0x000000,
                                        0x2C2CC8, 0x006464, 0xC8C896, 0x9C6464, 0x646432,
                                        0xC86432, 0xC86432, 0xC86432, 0x64C896};
  PXL_WorldHandle from = MakeSurface(32, 1, 1);
  PXL_WorldHandle to = MakeSurface(32, 1, 1);
  for (std::size_t mode = 0; mode < std::size(kResults); ++mode) {
    PixelAt<PXL_Pixel8>(from, 0, 0) = {{0, 0xC8, 0x64, 0x32}};
    PixelAt<PXL_Pixel8>(to, 0, 0) = {{0, 0x64, 0xC8, 0x96}};
    EXPECT_EQ(Blit(from, to, nullptr, nullptr, static_cast<std::uint16_t>(mode)), 0);
    EXPECT_EQ(__builtin_bswap32(Word(to, 0, 0)), kResults[mode]) << mode;
  }
  Dispose(to);
  Dispose(from);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Drawing, DrawsWithTheColorsOfTheDestination) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeSurface(32, kWidth, kHeight, PXL_Flag_CLEAR);
  constexpr QDE_RGBColor kWhite = {0xFFFF, 0xFFFF, 0xFFFF};
  EXPECT_EQ(QDE_SetPortColor(Record(to).gworld, QDE_PortColor_OP, &kWhite), 0);
  EXPECT_EQ(Blit(from, to, nullptr, nullptr, 8), 0);  // blend
  for (int k = 1; k < 4; ++k) {
    EXPECT_EQ(PixelAt<PXL_Pixel8>(to, 3, 3).channel[k], PixelAt<PXL_Pixel8>(from, 3, 3).channel[k]);
  }
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, TakesIndicesBeyondTheModesForSrcCopy) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeSurface(32, kWidth, kHeight, PXL_Flag_CLEAR);
  EXPECT_EQ(Blit(from, to, nullptr, nullptr, 19), 0);
  EXPECT_EQ(Word(to, 3, 3), Word(from, 3, 3));
  Dispose(to);
  Dispose(from);
}

TEST_F(Drawing, WidensAndNarrowsSurfacesByWayOfDeepWorlds) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle deep = Make(64, kWidth, kHeight);
  PXL_WorldHandle to = MakeSurface(32, kWidth, kHeight, PXL_Flag_CLEAR);
  {
    const Locked first(from);
    const Locked second(deep);
    const Locked third(to);
    EXPECT_EQ(PXL_Blit(from, deep, nullptr, nullptr, 0), PXL_Err_NONE);
    EXPECT_EQ(PXL_Blit(deep, to, nullptr, nullptr, 0), PXL_Err_NONE);
  }
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) ASSERT_EQ(Word(to, x, y), Word(from, x, y));
  }
  for (PXL_WorldHandle worldH : {to, deep, from}) Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(Drawing, IsTheSameAfterAReload) {
  PXL_WorldHandle from = MakeScribbled(32);
  PXL_WorldHandle to = MakeSurface(32, kWidth, kHeight, PXL_Flag_PURGEABLE);
  EXPECT_EQ(PXL_SetChannelOrder(to, PXL_ChannelOrder_ALTERNATE), PXL_Err_NONE);
  K_PurgeHandlesAndCompact();
  std::uint8_t reloaded = 0;
  EXPECT_EQ(PXL_LoadLockPixels(0, to, nullptr, &reloaded), PXL_Err_NONE);
  EXPECT_EQ(reloaded, 1);
  EXPECT_EQ(Blit(from, to), 0);
  EXPECT_EQ(Word(to, 2, 2), __builtin_bswap32(Word(from, 2, 2)));
  PXL_UnlockPixels(to);
  Dispose(to);
  Dispose(from);
}
