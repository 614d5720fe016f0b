// UpdateGWorld.
#include <set>

#include "tests/support/drawing/surfaces.h"

namespace {

constexpr std::uint32_t kRealloc = QDE_Flag_REALLOC_PIX;
constexpr std::uint32_t kNewDepth = QDE_Flag_NEW_DEPTH;
constexpr std::uint32_t kNewRowBytes = QDE_Flag_NEW_ROW_BYTES;

class Updates : public Surfaces {
 protected:
  // Each pixel of an 8-bit world shows its own column and row.
  static void Number(GWorldPtr world) {
    const Rect bounds = MapOf(world).bounds;
    for (int y = bounds.top; y < bounds.bottom; ++y) {
      for (int x = bounds.left; x < bounds.right; ++x) {
        *At(world, x, y) = Numbered(x - bounds.left, y - bounds.top);
      }
    }
  }
  static std::uint8_t Numbered(int column, int row) {
    return static_cast<std::uint8_t>(16 * row + column);
  }
  // Fails with an error; the world must be unchanged.
  static void ExpectUnchanged(GWorldPtr world, std::uint32_t result, std::int16_t error,
                              const PixMap& before) {
    EXPECT_EQ(result, AsResult(error));
    EXPECT_EQ(QDE_Error(), error);
    EXPECT_TRUE(MapOf(world) == before);
  }
};

TEST_F(Updates, ThatChangeNothingGiveNothing) {
  GWorldPtr world = Make(8, Sized(5, 3));
  Fill(world, 0);  // what lies between the rows is compared too
  Number(world);
  const auto before = Bytes(world);
  for (const std::uint32_t flags :
       {0x0U, 0x8U, 0x10000000U, 0x20000000U, 0x50000000U, 0x60000008U}) {
    EXPECT_EQ(Update(&world, 8, Sized(5, 3), flags), 0U) << flags;
  }
  EXPECT_EQ(Bytes(world), before);
  DisposeGWorld(world);
}

TEST_F(Updates, MayMoveTheBounds) {
  GWorldPtr world = Make(8, Sized(5, 3));
  Number(world);
  ASSERT_EQ(LockPixels(GetPortPixMap(world)), 1);
  EXPECT_EQ(Update(&world, 8, {-7, 100, -4, 105}), 0U);
  EXPECT_TRUE(MapOf(world).bounds == (Rect{-7, 100, -4, 105}));
  EXPECT_TRUE((*GetGWorldDevice(world))->gdRect == (Rect{-7, 100, -4, 105}));
  EXPECT_EQ(*At(world, 104, -5), Numbered(4, 2));
  DisposeGWorld(world);
}

TEST_F(Updates, TellWhatChanged) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const GWorldPtr pointer = world;
  const PixMapHandle map = GetPortPixMap(world);
  EXPECT_EQ(Update(&world, 8, Sized(7, 3)), kRealloc);
  EXPECT_EQ(Update(&world, 8, Sized(7, 9)), kRealloc);
  EXPECT_EQ(Update(&world, 8, Sized(17, 9)), kRealloc | kNewRowBytes);
  EXPECT_EQ(Update(&world, 32, Sized(4, 9)), kRealloc | kNewRowBytes | kNewDepth);
  EXPECT_EQ(Update(&world, 8, Sized(16, 9)), kRealloc | kNewDepth);
  EXPECT_EQ(world, pointer);
  EXPECT_EQ(GetPortPixMap(world), map);
  EXPECT_EQ(QDE_Error(), 0);
  DisposeGWorld(world);
}

TEST_F(Updates, ChangeDepthTableAndDevice) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const GDHandle device = GetGWorldDevice(world);
  EXPECT_NE(Update(&world, 32, Sized(6, 4)), 0U);
  EXPECT_EQ(MapOf(world).pixelSize, 32);
  EXPECT_EQ(MapOf(world).cmpCount, 3);
  EXPECT_EQ(StrideOf(world), 32);
  EXPECT_NE(MapOf(world).pmTable, QDE_StandardColors());
  EXPECT_EQ(GetGWorldDevice(world), device);
  EXPECT_EQ((*device)->gdType, QDE_DeviceType_DIRECT);
  EXPECT_TRUE((*device)->gdRect == Sized(6, 4));
  EXPECT_NE(Update(&world, 8, Sized(6, 4)), 0U);
  EXPECT_EQ(MapOf(world).pmTable, QDE_StandardColors());
  EXPECT_NE(Update(&world, 0, Sized(6, 4)), 0U);
  EXPECT_EQ(MapOf(world).pixelSize, 32);
  DisposeGWorld(world);
}

TEST_F(Updates, LeaveNewPixelsUnlocked) {
  GWorldPtr world = Make(8, Sized(5, 3));
  ASSERT_EQ(LockPixels(GetPortPixMap(world)), 1);
  EXPECT_EQ(Update(&world, 8, Sized(6, 3)), kRealloc);
  EXPECT_TRUE(K_IsHandle(MapOf(world).baseAddr));
  DisposeGWorld(world);
}

TEST_F(Updates, MoveUnlockedBlocks) {
  GWorldPtr other = Make(8, Sized(5, 3));
  GWorldPtr world = Make(8, Sized(5, 3));
  const std::uint8_t* before = PixelsOf(other);
  EXPECT_EQ(Update(&world, 8, Sized(5, 3)), 0U);
  EXPECT_NE(PixelsOf(other), before);
  DisposeGWorld(world);
  DisposeGWorld(other);
}

TEST_F(Updates, CarryClippedPixelsOverFromTheUpperLeft) {
  GWorldPtr world = Make(8, {10, 10, 13, 15});
  Number(world);
  EXPECT_EQ(Update(&world, 8, {0, 0, 2, 20}, QDE_Flag_CLIP_PIX), kRealloc | kNewRowBytes);
  for (int y = 0; y < 2; ++y) {
    for (int x = 0; x < 5; ++x) EXPECT_EQ(*At(world, x, y), Numbered(x, y));
  }
  DisposeGWorld(world);
}

TEST_F(Updates, CarryStretchedPixelsOverAsCopyBitsScales) {
  GWorldPtr world = Make(8, Sized(3, 2));
  Number(world);
  EXPECT_EQ(Update(&world, 8, {5, 5, 9, 11}, QDE_Flag_STRETCH_PIX | QDE_Flag_DITHER_PIX), kRealloc);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 6; ++x) EXPECT_EQ(*At(world, 5 + x, 5 + y), Numbered(x / 2, y / 2));
  }
  DisposeGWorld(world);
}

TEST_F(Updates, CarryPixelsOverToAnotherDepth) {
  GWorldPtr world = Make(8, Sized(2, 1));
  *At(world, 0, 0) = 35;   // FF0000
  *At(world, 1, 0) = 245;  // EEEEEE
  EXPECT_NE(Update(&world, 32, Sized(2, 1), QDE_Flag_CLIP_PIX), 0U);
  const std::uint8_t expected[] = {0, 0xFF, 0, 0, 0, 0xEE, 0xEE, 0xEE};
  EXPECT_EQ(std::memcmp(PixelsOf(world), expected, 8), 0);
  EXPECT_NE(Update(&world, 8, Sized(2, 1), QDE_Flag_STRETCH_PIX), 0U);
  EXPECT_EQ(*At(world, 0, 0), 35);
  EXPECT_EQ(*At(world, 1, 0), 245);
  DisposeGWorld(world);
}

TEST_F(Updates, DitherOnTheWayTo8BitsWhenAsked) {
  for (const std::uint32_t carry : {QDE_Flag_CLIP_PIX, QDE_Flag_STRETCH_PIX}) {
    for (const bool dithers : {false, true}) {
      // A grey between 77 and 88.
      GWorldPtr world = Make(32, Sized(16, 16));
      Fill(world, 0x7F);
      const std::uint32_t flags = carry | (dithers ? std::uint32_t{QDE_Flag_DITHER_PIX} : 0U);
      EXPECT_EQ(Update(&world, 8, Sized(16, 16), flags), kRealloc | kNewDepth | kNewRowBytes);
      const auto bytes = Bytes(world);
      EXPECT_EQ(std::set<int>(bytes.begin(), bytes.end()),
                dithers ? (std::set{249, 250}) : (std::set{250}));
      DisposeGWorld(world);
    }
  }
}

// Red and white only.
class UpdatesOfTables : public Updates {
 protected:
  std::uint32_t Remap(GWorldPtr* world, CTabHandle colors, std::uint32_t flags = 0) {
    return UpdateGWorld(world, 8, &bounds_, colors, nullptr, flags);
  }

  const Rect bounds_ = Sized(16, 2);
  QDE_ColorTable table_{1024, 0, 1, {{0, {0xFFFF, 0, 0}}, {1, {0xFFFF, 0xFFFF, 0xFFFF}}}};
  QDE_ColorTable* master_ = &table_;
};

TEST_F(UpdatesOfTables, RemapThePixels) {
  GWorldPtr world = Make(8, bounds_);
  Fill(world, 0);          // white
  *At(world, 1, 0) = 35;   // red
  *At(world, 2, 0) = 215;  // nearly red
  EXPECT_EQ(Remap(&world, &master_, QDE_Flag_CLIP_PIX), kRealloc | QDE_Flag_MAP_PIX);
  EXPECT_EQ(*At(world, 0, 0), 1);
  EXPECT_EQ(*At(world, 1, 0), 0);
  EXPECT_EQ(*At(world, 2, 0), 0);
  EXPECT_EQ((**MapOf(world).pmTable).ctSeed, 1024);
  // Neither the same table again nor the world's own one changes anything.
  EXPECT_EQ(Remap(&world, &master_, QDE_Flag_CLIP_PIX), 0U);
  EXPECT_EQ(Remap(&world, MapOf(world).pmTable, QDE_Flag_CLIP_PIX), 0U);
  // And back to the standard one.
  EXPECT_EQ(Remap(&world, nullptr, QDE_Flag_STRETCH_PIX), kRealloc | QDE_Flag_MAP_PIX);
  EXPECT_EQ(*At(world, 0, 0), 0);
  EXPECT_EQ(*At(world, 1, 0), 35);
  EXPECT_EQ(MapOf(world).pmTable, QDE_StandardColors());
  DisposeGWorld(world);
}

TEST_F(UpdatesOfTables, KeepTheWorldsOwnTableThroughANewSize) {
  GWorldPtr world = nullptr;
  ASSERT_EQ(NewGWorld(&world, 8, &bounds_, &master_, nullptr, 0), 0);
  Fill(world, 1);
  const Rect larger = Sized(16, 3);
  EXPECT_EQ(UpdateGWorld(&world, 8, &larger, MapOf(world).pmTable, nullptr, QDE_Flag_STRETCH_PIX),
            kRealloc);
  EXPECT_EQ((**MapOf(world).pmTable).ctTable[1].rgb.green, 0xFFFF);
  EXPECT_EQ(*At(world, 15, 2), 1);
  DisposeGWorld(world);
}

TEST_F(UpdatesOfTables, DitherWhenAsked) {
  for (const bool dithers : {false, true}) {
    GWorldPtr world = Make(8, bounds_);
    Fill(world, 8);  // FFCC99 is nearer to white
    Remap(&world, &master_,
          QDE_Flag_CLIP_PIX | (dithers ? std::uint32_t{QDE_Flag_DITHER_PIX} : 0U));
    const auto bytes = Bytes(world);
    EXPECT_EQ(std::set<int>(bytes.begin(), bytes.end()),
              dithers ? (std::set{0, 1}) : (std::set{1}));
    DisposeGWorld(world);
  }
}

TEST_F(Updates, KeepTheColorsOfThePort) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const QDE_RGBColor red{0xFFFF, 0, 0};
  ASSERT_EQ(QDE_SetPortColor(world, QDE_PortColor_BACK, &red), 0);
  EXPECT_NE(Update(&world, 32, Sized(6, 3)), 0U);
  QDE_RGBColor kept{};
  EXPECT_EQ(QDE_GetPortColor(world, QDE_PortColor_BACK, &kept), 0);
  EXPECT_EQ(kept.red, 0xFFFF);
  EXPECT_EQ(kept.green, 0);
  DisposeGWorld(world);
}

TEST_F(Updates, WithPurgedPixelsHaveNothingToCarryOver) {
  GWorldPtr world = Make(8, Sized(5, 3), QDE_Flag_PIX_PURGE);
  Press();
  EXPECT_EQ(Update(&world, 8, Sized(9, 3), QDE_Flag_CLIP_PIX), kRealloc);
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

TEST_F(Updates, TakeTheLegalFlagsOnly) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const PixMap before = MapOf(world);
  for (const std::uint32_t flags :
       {0x1U, 0x2U, 0x4U, 0x30000000U, 0x40000000U, 0x70000000U, 0x80000000U}) {
    ExpectUnchanged(world, Update(&world, 8, Sized(6, 3), flags), -50, before);
  }
  DisposeGWorld(world);
}

TEST_F(Updates, DoNotLookAtTheDevice) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const Rect bounds = Sized(6, 3);
  auto* const noDevice = reinterpret_cast<GDHandle>(std::intptr_t{-1});
  EXPECT_EQ(UpdateGWorld(&world, 8, &bounds, nullptr, noDevice, 0), kRealloc);
  DisposeGWorld(world);
}

TEST_F(Updates, ThatCannotBeAreRefusedAndChangeNothing) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const PixMap before = MapOf(world);
  ExpectUnchanged(world, Update(&world, 16, Sized(5, 3)), -157, before);
  ExpectUnchanged(world, Update(&world, 8, Sized(0, 3)), -50, before);
  ExpectUnchanged(world, Update(&world, 32, Sized(4096, 3)), -50, before);
  ExpectUnchanged(world, UpdateGWorld(&world, 8, nullptr, nullptr, nullptr, 0), -50, before);
  QDE_ColorTable table{};
  table.ctSize = -1;
  QDE_ColorTable* master = &table;
  const Rect bounds = Sized(6, 3);
  ExpectUnchanged(world, UpdateGWorld(&world, 8, &bounds, &master, nullptr, 0), -50, before);
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

TEST_F(Updates, NeedAWorld) {
  const Rect bounds = Sized(5, 3);
  GWorldPtr world = nullptr;
  EXPECT_EQ(Update(&world, 8, bounds), AsResult(-50));
  EXPECT_EQ(world, nullptr);
  EXPECT_EQ(Update(nullptr, 8, bounds), AsResult(-50));
  GWorldPtr gone = Make(8, bounds);
  DisposeGWorld(gone);
  EXPECT_EQ(Update(&gone, 8, bounds), AsResult(-50));
  EXPECT_EQ(QDE_Error(), -50);
}

TEST_F(Updates, WithoutMemoryLeaveTheWorldAsItWas) {
  GWorldPtr world = Make(8, Sized(50, 50));
  Fill(world, 0x42);
  const PixMap before = MapOf(world);
  K_SetMemoryBudget(20000);
  ExpectUnchanged(world, Update(&world, 32, Sized(100, 100), QDE_Flag_CLIP_PIX), -108, before);
  EXPECT_EQ(Bytes(world), std::vector<std::uint8_t>(64 * 50, 0x42));
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

TEST_F(Updates, FailOnceWhenToldTo) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const PixMap before = MapOf(world);
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, -108);
  ExpectUnchanged(world, Update(&world, 8, Sized(6, 3)), -108, before);
  EXPECT_EQ(Update(&world, 8, Sized(6, 3)), kRealloc);
  DisposeGWorld(world);
}

TEST_F(Updates, ThatFailLoseThePixelsWhenToldTo) {
  GWorldPtr world = Make(8, Sized(5, 3));
  auto* const pixels = reinterpret_cast<Handle>(MapOf(world).baseAddr);
  QDE_LosePixelsInFailedUpdates(1);
  EXPECT_EQ(Update(&world, 16, Sized(5, 3)), AsResult(-157));
  EXPECT_FALSE(K_IsHandle(pixels));
  EXPECT_EQ(MapOf(world).baseAddr, nullptr);
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 0);
  UnlockPixels(GetPortPixMap(world));
  EXPECT_EQ(GetPixBaseAddr(GetPortPixMap(world)), nullptr);
  EXPECT_EQ(Update(&world, 8, Sized(5, 3)), kRealloc);
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

// The memory of a freed record may be reused by another world of another format.
TEST_F(Updates, ForgetTheRecordThatTheyReplace) {
  GWorldPtr changing = Make(32, Sized(1, 1));
  ASSERT_EQ(QDE_SetGWorld32PixmapFormat(changing, 1), 0);
  GWorldPtr destination = Make(32, Sized(1, 1));
  const Rect rect = Sized(1, 1);
  std::vector<GWorldPtr> others;
  for (int round = 1; round <= 20; ++round) {
    EXPECT_NE(Update(&changing, 32, Sized(1 + round % 2, 1)), 0U);
    GWorldPtr other = others.emplace_back(Make(32, rect));
    Fill(other, 0);
    *PixelsOf(other) = 0x81;
    CopyBits(GetPortBitMapForCopyBits(other), GetPortBitMapForCopyBits(destination), &rect, &rect,
             0, nullptr);
    EXPECT_EQ(*PixelsOf(destination), 0x81);
  }
  for (GWorldPtr other : others) DisposeGWorld(other);
  DisposeGWorld(destination);
  DisposeGWorld(changing);
}

TEST_F(Updates, ReplaceThePointerWhenToldTo) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const GWorldPtr old = world;
  QDE_ReplaceWorldInUpdates(1);
  EXPECT_EQ(Update(&world, 32, Sized(5, 3)), kRealloc | kNewDepth | kNewRowBytes);
  EXPECT_NE(world, old);
  // Both mean the same world.
  EXPECT_EQ(GetPortPixMap(old), GetPortPixMap(world));
  EXPECT_EQ(GetGWorldDevice(old), GetGWorldDevice(world));
  const GWorldPtr kept = world;
  EXPECT_EQ(Update(&world, 32, Sized(6, 3)), kRealloc);
  EXPECT_EQ(world, kept);
  MacSetPort(world);
  DisposeGWorld(old);
  EXPECT_EQ(GetPortPixMap(world), nullptr);
  GrafPtr port = world;
  GetPort(&port);
  EXPECT_EQ(port, nullptr);
  DisposeGWorld(world);
}

TEST_F(Updates, ReplaceThePointerEvenWhenTheyFail) {
  GWorldPtr world = Make(8, Sized(5, 3));
  const GWorldPtr old = world;
  const PixMap before = MapOf(world);
  QDE_ReplaceWorldInUpdates(1);
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, -50);
  ExpectUnchanged(old, Update(&world, 8, Sized(6, 3)), -50, before);
  EXPECT_NE(world, old);
  DisposeGWorld(world);
}

}  // namespace
