// The result of each transfer mode for chosen pixels.
#include "tests/stand_ins/QDE/copying.h"

namespace {

constexpr int kBooleanModes[] = {0, 1, 2, 3, 4, 5, 6, 7};
constexpr int kAllModes[] = {0, 1, 2, 3, 4, 5, 6, 7, 32, 33, 34, 35, 36, 37, 38, 39, 50};
constexpr std::uint32_t kSource = 0xC86432;
constexpr std::uint32_t kOld = 0x64C896;

class Modes : public Copying {
 protected:
  // One pixel over another, each AARRGGBB, the formats as said.
  std::uint32_t Drawn(int mode, std::uint32_t source, std::uint32_t old, std::int32_t from = 0,
                      std::int32_t to = 0) {
    GWorldPtr destination = Pixels({old}, to);
    Draw(Pixels({source}, from), destination, mode);
    return PixelAt(destination, 0);
  }
  std::uint32_t DrawnIndex(int mode, std::uint8_t source, std::uint8_t old) {
    GWorldPtr destination = Indices({old});
    Draw(Indices({source}), destination, mode);
    return PixelAt(destination, 0);
  }
  // In all orders of bytes, with fourth bytes that do not matter.
  void ExpectDrawn(int mode, std::uint32_t source, std::uint32_t old, std::uint32_t expected) {
    for (const std::int32_t from : {0, 1}) {
      for (const std::int32_t to : {0, 1}) {
        const std::uint32_t fourth = mode == 0 || mode == 64 ? 0x5A000000 : 0xA1000000;
        EXPECT_EQ(Drawn(mode, 0x5A000000 | source, 0xA1000000 | old, from, to), fourth | expected)
            << "mode " << mode << ", format " << from << " to " << to;
      }
    }
  }
  // The same in all components.
  void ExpectComponent(int mode, std::uint32_t source, std::uint32_t old, std::uint32_t expected) {
    ExpectDrawn(mode, source * 0x010101, old * 0x010101, expected * 0x010101);
  }
};

struct Example {
  int mode;
  std::uint32_t black, white, component, pixel;
  std::uint32_t index;
};

TEST_F(Modes, OfBitsCombineDirectPixels) {
  constexpr Example kExamples[] = {
      {0, 0x00, 0xFF, 0xC8, 0xC86432, 0x2B}, {1, 0x00, 0x64, 0x40, 0x404012, 0xFF},
      {2, 0x9B, 0x64, 0x53, 0x53535B, 0xFD}, {3, 0xFF, 0x64, 0x77, 0x77DBDF, 0xD4},
      {4, 0xFF, 0x00, 0x37, 0x379BCD, 0xD4}, {5, 0x64, 0x00, 0x24, 0x248884, 0xD6},
      {6, 0x64, 0x9B, 0xAC, 0xACACA4, 0x02}, {7, 0x64, 0xFF, 0xEC, 0xECECB6, 0x02},
  };
  for (const Example& example : kExamples) {
    ExpectComponent(example.mode, 0x00, 0x64, example.black);
    ExpectComponent(example.mode, 0xFF, 0x64, example.white);
    ExpectComponent(example.mode, 0xC8, 0x64, example.component);
    ExpectDrawn(example.mode, kSource, kOld, example.pixel);
    EXPECT_EQ(DrawnIndex(example.mode, 0x2B, 0xD6), example.index) << example.mode;
  }
}

// Fore, background and old pixel, of which black and white source pixels choose.
TEST_F(Modes, OfBitsTakeTheColorsOfThePortAtTheEnds) {
  constexpr std::uint32_t kFore = 0x102030;
  constexpr std::uint32_t kBack = 0xF1E2D3;
  SetColor(QDE_PortColor_FORE, kFore);
  SetColor(QDE_PortColor_BACK, kBack);
  constexpr std::uint32_t kInverse = 0xFFFFFF - kOld;
  constexpr std::uint32_t kEnds[][2] = {{kFore, kBack},   {kFore, kOld},  {kInverse, kOld},
                                        {kBack, kOld},    {kBack, kFore}, {kOld, kFore},
                                        {kOld, kInverse}, {kOld, kBack}};
  for (const int mode : kBooleanModes) {
    ExpectDrawn(mode, 0x000000, kOld, kEnds[mode][0]);
    ExpectDrawn(mode, 0xFFFFFF, kOld, kEnds[mode][1]);
  }
}

TEST_F(Modes, ThatCopyMixTheColorsOfThePort) {
  SetColor(QDE_PortColor_FORE, 0xFF0000);
  SetColor(QDE_PortColor_BACK, 0x0000FF);
  ExpectDrawn(0, 0x808080, kOld, 0x7F0080);
  ExpectDrawn(4, 0x808080, kOld, 0x80007F);
  SetColor(QDE_PortColor_FORE, 0x206040);
  SetColor(QDE_PortColor_BACK, 0xA000C1);
  // 20 + (A0 - 20) * 40 / FF is 40.1 and so on; to the nearest.
  ExpectDrawn(0, 0x4080C0, kOld, 0x4030A1);
  ExpectDrawn(64, 0x4080C0, kOld, 0x4030A1);
}

// For an 8-bit source, these modes work on its colours, not on its indices.
TEST_F(Modes, ThatCopyIndicesMixTheColorsOfThePortAsWell) {
  SetColor(QDE_PortColor_FORE, 0xFF0000);
  SetColor(QDE_PortColor_BACK, 0x0000FF);
  GWorldPtr destination = Indices({7, 7, 7});
  Draw(Indices({0, 255, 249}), destination, 0);  // white, black, 888888
  // 770088 is nearest to 660099.
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{210, 35, 140}));
}

// The port's colours do not change their results.
TEST_F(Modes, ThatInvertIndicesDoSoWhateverTheColors) {
  SetColor(QDE_PortColor_FORE, 0x123456);
  SetColor(QDE_PortColor_BACK, 0x654321);
  EXPECT_EQ(DrawnIndex(2, 0x2B, 0xD6), 0xFDU);
  EXPECT_EQ(DrawnIndex(6, 0x2B, 0xD6), 0x02U);
}

TEST_F(Modes, ThatInvertUndoThemselves) {
  for (const int mode : {2, 6}) {
    for (const int depth : {8, 32}) {
      GWorldPtr source = World(depth, 16, 16);
      GWorldPtr destination = World(depth, 16, 16);
      for (std::size_t i = 0; i < Size(source); ++i) {
        PixelsOf(source)[i] = static_cast<std::uint8_t>(i * 7);
        PixelsOf(destination)[i] = static_cast<std::uint8_t>(i * 13 + i / 256);
      }
      const auto before = Bytes(destination);
      Draw(source, destination, mode);
      EXPECT_NE(Bytes(destination), before);
      Draw(source, destination, mode);
      EXPECT_EQ(Bytes(destination), before);
    }
  }
}

TEST_F(Modes, BlendByTheOpColor) {
  ExpectDrawn(32, kSource, kOld, kOld);  // the op colour is black at first
  SetWideColor(QDE_PortColor_OP, {0x8000, 0x8000, 0x8000});
  ExpectDrawn(32, kSource, kOld, 0x969563);
  SetWideColor(QDE_PortColor_OP, {0x4000, 0x4000, 0x4000});
  ExpectDrawn(32, kSource, kOld, 0x7DAE7C);
  SetWideColor(QDE_PortColor_OP, {0xFFFF, 0x8000, 0x0000});
  ExpectDrawn(32, kSource, kOld, 0xC89596);
  SetColor(QDE_PortColor_OP, 0xFFFFFF);
  ExpectDrawn(32, kSource, kOld, kSource);
}

// Every pair of components, in 256 copies of 256 pixels.
TEST_F(Modes, BlendExactly) {
  for (const std::uint32_t weight :
       {0x0000U, 0x0001U, 0x1234U, 0x7FFFU, 0x8000U, 0xFFFEU, 0xFFFFU}) {
    const auto wide = static_cast<std::uint16_t>(weight);
    SetWideColor(QDE_PortColor_OP, {wide, wide, wide});
    GWorldPtr sources = World(32, 256, 256);
    GWorldPtr destination = World(32, 256, 256);
    for (int y = 0; y < 256; ++y) {
      std::uint8_t* row = At(sources, 0, y);
      for (int i = 0; i < 4 * 256; ++i) row[i] = static_cast<std::uint8_t>(i / 4);
      std::memset(At(destination, 0, y), y, 4 * 256);
    }
    Draw(sources, destination, 32);
    int differences = 0;
    for (std::uint32_t y = 0; y < 256; ++y) {
      const std::uint8_t* pixel = At(destination, 0, static_cast<int>(y));
      for (std::uint32_t x = 0; x < 256; ++x, pixel += 4) {
        const std::uint32_t expected = (x * weight + y * (65535 - weight)) / 65535;
        const bool same = pixel[1] == expected && pixel[2] == expected && pixel[3] == expected;
        if (!same || pixel[0] != y) ++differences;
      }
    }
    EXPECT_EQ(differences, 0) << "weight " << weight;
  }
}

TEST_F(Modes, AddUpToTheOpColor) {
  ExpectDrawn(33, kSource, kOld, 0x000000);
  SetColor(QDE_PortColor_OP, 0xFFFFFF);
  ExpectDrawn(33, kSource, kOld, 0xFFFFC8);
  SetWideColor(QDE_PortColor_OP, {0xC000, 0xC0FF, 0xC000});
  ExpectDrawn(33, kSource, kOld, 0xC0C0C0);
}

TEST_F(Modes, SubtractDownToTheOpColor) {
  ExpectDrawn(35, kSource, kOld, 0x006464);
  SetColor(QDE_PortColor_OP, 0x404040);
  ExpectDrawn(35, kSource, kOld, 0x406464);
}

TEST_F(Modes, AddAndSubtractRoundTheEnds) {
  ExpectDrawn(34, kSource, kOld, 0x2C2CC8);
  ExpectDrawn(38, kSource, kOld, 0x9C6464);
  ExpectComponent(34, 0xFF, 0xFF, 0xFE);
  ExpectComponent(38, 0xFF, 0x00, 0x01);
}

TEST_F(Modes, TakeTheLargerOrTheSmaller) {
  ExpectDrawn(37, kSource, kOld, 0xC8C896);
  ExpectDrawn(39, kSource, kOld, 0x646432);
}

TEST_F(Modes, LeaveOutTheBackground) {
  ExpectDrawn(36, kSource, kOld, kSource);
  ExpectDrawn(36, 0xFFFFFF, kOld, kOld);
  SetColor(QDE_PortColor_BACK, kSource);
  ExpectDrawn(36, kSource, kOld, kOld);
  ExpectDrawn(36, 0xFFFFFF, kOld, 0xFFFFFF);
  // One component makes the difference.
  ExpectDrawn(36, kSource ^ 1, kOld, kSource ^ 1);
  ExpectDrawn(36, kSource ^ 0x10000, kOld, kSource ^ 0x10000);
}

TEST_F(Modes, LeaveOutTheBackgroundAmongIndices) {
  SetColor(QDE_PortColor_BACK, 0xFF0000);
  for (const int mode : {36, 36 + 64}) {
    GWorldPtr destination = Indices({1, 2, 3});
    Draw(Indices({35, 36, 35}), destination, mode);
    EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{1, 36, 3}));
  }
}

TEST_F(Modes, SwapBackgroundAndHighlight) {
  SetColor(QDE_PortColor_HILITE, 0x40E080);
  SetColor(QDE_PortColor_BACK, 0xF0F0F0);
  ExpectDrawn(50, 0x000000, 0xF0F0F0, 0x40E080);
  ExpectDrawn(50, 0x123456, 0x40E080, 0xF0F0F0);
  ExpectDrawn(50, 0x000000, kOld, kOld);
  ExpectDrawn(50, 0xFFFFFF, 0xF0F0F0, 0xF0F0F0);
  ExpectDrawn(50, 0xFFFFFF, 0x40E080, 0x40E080);
  ExpectDrawn(50, 0xFFFEFF, 0x40E080, 0xF0F0F0);
}

// The table has no 40E080; its nearest colour is swapped, and swapped back.
TEST_F(Modes, SwapWhatStandsForTheHighlightAmongIndices) {
  SetColor(QDE_PortColor_HILITE, 0x40E080);
  GWorldPtr source = Indices({255, 255, 0, 7});
  GWorldPtr destination = Indices({0, 5, 0, 0});
  constexpr std::uint32_t kShown = 152;  // 33CC99
  Draw(source, destination, 50);
  const auto once = Row(destination);
  EXPECT_EQ(once[1], 5U);
  EXPECT_EQ(once[2], 0U);
  EXPECT_NE(once[0], 0U);
  EXPECT_EQ(once[3], once[0]);
  EXPECT_EQ(once[0], kShown);
  Draw(source, destination, 50);
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{0, 5, 0, 0}));
}

TEST_F(Modes, WriteNoFourthByteButThatOfCopiedPixels) {
  for (const int mode : kAllModes) {
    GWorldPtr fromIndex = Pixels({0xA1000000 | kOld});
    Draw(Indices({58}), fromIndex, mode);
    const std::uint32_t expected = mode == 0 ? 0x00 : 0xA1;
    EXPECT_EQ(PixelAt(fromIndex, 0) >> 24, expected) << mode;
    const std::uint32_t copied = mode == 0 ? 0x5A : 0xA1;
    EXPECT_EQ(Drawn(mode, 0x5A000000 | kSource, 0xA1000000 | kOld) >> 24, copied) << mode;
  }
}

TEST_F(Modes, CombineColorsAndThenFindTheNearest) {
  // 66CC99 + 993300 = FFFF99, both of the table.
  SetColor(QDE_PortColor_OP, 0xFFFFFF);
  GWorldPtr destination = Indices({116});
  Draw(Indices({36 * 2 + 6 * 4 + 5}), destination, 33);
  EXPECT_EQ(PixelAt(destination, 0), 2U);
  // 66CC99 + C86432 = FFFFCB, which is nearest to FFFFCC.
  destination = Indices({116});
  Draw(Pixels({kSource}), destination, 33);
  EXPECT_EQ(PixelAt(destination, 0), 1U);
}

// Two indices of one colour: where nothing changes, neither does the index.
TEST_F(Modes, KeepTheIndexOfAColorThatStays) {
  QDE_ColorTable table{1024, 0, 2, {{0, {0, 0, 0}}, {1, {0xFFFF, 0, 0}}, {2, {0xFFFF, 0, 0}}}};
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(2, 1);
  GWorldPtr destination = nullptr;
  ASSERT_EQ(NewGWorld(&destination, 8, &bounds, &master, nullptr, 0), 0);
  Keep(destination);
  SetColor(QDE_PortColor_OP, 0x000000);
  for (const int mode : {1, 32, 36, 37, 32 + 64}) {
    // White in the first three, which they leave out, black in adMax.
    const std::uint32_t nothing = mode == 37 ? 0x000000 : 0xFFFFFF;
    PixelsOf(destination)[0] = 2;
    PixelsOf(destination)[1] = 1;
    Draw(Pixels({nothing, nothing}), destination, mode);
    EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{2, 1})) << mode;
  }
  // A copied pixel takes the lower index.
  Draw(Pixels({0xFF0000, 0xFF0000}), destination, 0);
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{1, 1}));
  PixelsOf(destination)[0] = 2;
  Draw(Pixels({0x00FFFF, 0x00FFFF}), destination, 4);
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{1, 1}));
}

// Of another seed, and by place instead of by value.
TEST_F(Modes, WorkOnIndicesOfTablesWithTheSameColors) {
  QDE_ColorTable table{1024, 0, 2, {{0, {0, 0, 0}}, {1, {0xFFFF, 0, 0}}, {2, {0xFFFF, 0, 0}}}};
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(3, 1);
  GWorldPtr source = nullptr;
  ASSERT_EQ(NewGWorld(&source, 8, &bounds, &master, nullptr, 0), 0);
  Keep(source);
  table.ctSeed = 1025;
  table.ctFlags = -0x8000;
  for (QDE_ColorSpec& entry : table.ctTable) entry.value = 0;
  GWorldPtr destination = nullptr;
  ASSERT_EQ(NewGWorld(&destination, 8, &bounds, &master, nullptr, 0), 0);
  Keep(destination);
  for (std::uint8_t i = 0; i < 3; ++i) PixelsOf(source)[i] = i;
  Fill(destination, 0);
  Draw(source, destination, 0);
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{0, 1, 2}));
  Fill(destination, 4);
  Draw(source, destination, 1);
  EXPECT_EQ(Row(destination), (std::vector<std::uint32_t>{4, 5, 6}));
}

TEST_F(Modes, DrawWithTheColorsOfTheCurrentPort) {
  GWorldPtr other = World(32, 1, 1);
  const QDE_RGBColor red{0xFFFF, 0, 0};
  ASSERT_EQ(QDE_SetPortColor(other, QDE_PortColor_FORE, &red), 0);
  ExpectDrawn(0, 0x000000, kOld, 0x000000);
  MacSetPort(other);
  ExpectDrawn(0, 0x000000, kOld, 0xFF0000);
  // Without a port, or with one that is gone, as at first.
  MacSetPort(nullptr);
  ExpectDrawn(0, 0x000000, kOld, 0x000000);
  MacSetPort(reinterpret_cast<GrafPtr>(&other));
  ExpectDrawn(0, 0x000000, kOld, 0x000000);
}

}  // namespace
