// NewGWorld and DisposeGWorld.
#include <initializer_list>
#include <utility>

#include "tests/support/drawing/surfaces.h"

namespace {

class Worlds : public Surfaces {
 protected:
  static std::int16_t Refusal(std::int16_t depth, const Rect* bounds, std::uint32_t flags = 0,
                              CTabHandle colors = nullptr, GDHandle device = nullptr) {
    char something = 0;
    auto* world = reinterpret_cast<GWorldPtr>(&something);
    const std::int16_t error = NewGWorld(&world, depth, bounds, colors, device, flags);
    EXPECT_EQ(world, nullptr);
    EXPECT_EQ(QDE_Error(), error);
    return error;
  }
  static std::int32_t StrideFor(std::int16_t depth, int width) {
    GWorldPtr world = Make(depth, Sized(width, 1));
    const std::int32_t stride = StrideOf(world);
    DisposeGWorld(world);
    return stride;
  }
};

TEST_F(Worlds, Of32BitsHaveTheirPixelMapAsPublished) {
  const Rect bounds = {-3, 5, 7, 25};
  GWorldPtr world = Make(32, bounds);
  const PixMap& map = MapOf(world);
  EXPECT_EQ(map.rowBytes, static_cast<std::int16_t>(0x8000 | 80));
  EXPECT_TRUE(map.bounds == bounds);
  EXPECT_EQ(map.pmVersion, 0);
  EXPECT_EQ(map.packType, 0);
  EXPECT_EQ(map.packSize, 0);
  EXPECT_EQ(map.hRes, 0x00480000);
  EXPECT_EQ(map.vRes, 0x00480000);
  EXPECT_EQ(map.pixelType, 16);
  EXPECT_EQ(map.pixelSize, 32);
  EXPECT_EQ(map.cmpCount, 3);
  EXPECT_EQ(map.cmpSize, 8);
  EXPECT_EQ(map.planeBytes, 0);
  EXPECT_EQ(map.pmReserved, 0);
  ASSERT_NE(map.pmTable, nullptr);
  EXPECT_NE(map.pmTable, QDE_StandardColors());
  EXPECT_EQ((*map.pmTable)->ctSize, 0);
  DisposeGWorld(world);
}

TEST_F(Worlds, Of8BitsHaveTheStandardColors) {
  GWorldPtr world = Make(8, Sized(17, 3));
  const PixMap& map = MapOf(world);
  EXPECT_EQ(map.rowBytes, static_cast<std::int16_t>(0x8000 | 32));
  EXPECT_EQ(map.pixelType, 0);
  EXPECT_EQ(map.pixelSize, 8);
  EXPECT_EQ(map.cmpCount, 1);
  EXPECT_EQ(map.cmpSize, 8);
  EXPECT_EQ(map.pmTable, QDE_StandardColors());
  DisposeGWorld(world);
}

TEST_F(Worlds, HaveADeviceOfTheirOwn) {
  GWorldPtr deep = Make(32, {1, 2, 3, 4});
  GWorldPtr indexed = Make(8, {1, 2, 3, 4});
  const GDHandle device = GetGWorldDevice(deep);
  ASSERT_NE(device, nullptr);
  EXPECT_NE(device, GetGWorldDevice(indexed));
  EXPECT_NE(device, QDE_MainDevice());
  EXPECT_EQ((*device)->gdType, QDE_DeviceType_DIRECT);
  EXPECT_EQ((*device)->gdPMap, GetPortPixMap(deep));
  EXPECT_TRUE((*device)->gdRect == (Rect{1, 2, 3, 4}));
  EXPECT_EQ((*GetGWorldDevice(indexed))->gdType, QDE_DeviceType_INDEXED);
  DisposeGWorld(indexed);
  DisposeGWorld(deep);
}

TEST_F(Worlds, KeepTheirRowsTo16BytesWhereTheStrideHasRoomForThat) {
  EXPECT_EQ(StrideFor(8, 1), 16);
  EXPECT_EQ(StrideFor(8, 16), 16);
  EXPECT_EQ(StrideFor(8, 16368), 16368);
  EXPECT_EQ(StrideFor(8, 16369), 16372);
  EXPECT_EQ(StrideFor(8, 16380), 16380);
  EXPECT_EQ(StrideFor(8, 16381), 16382);
  EXPECT_EQ(StrideFor(32, 5), 32);
  EXPECT_EQ(StrideFor(32, 4092), 16368);
  EXPECT_EQ(StrideFor(32, 4095), 16380);
}

TEST_F(Worlds, TooWideForTheStrideAreRefused) {
  const Rect indexed = Sized(16383, 1);
  const Rect deep = Sized(4096, 1);
  const Rect widest = {0, -32768, 1, 32767};
  EXPECT_EQ(Refusal(8, &indexed), -50);
  EXPECT_EQ(Refusal(32, &deep), -50);
  EXPECT_EQ(Refusal(32, &widest), -50);
}

TEST_F(Worlds, OfOtherDepthsAreRefused) {
  const Rect bounds = Sized(4, 4);
  for (const std::int16_t depth :
       std::initializer_list<std::int16_t>{1, 2, 4, 16, 24, 64, -8, -32}) {
    EXPECT_EQ(Refusal(depth, &bounds), -157) << depth;
  }
}

TEST_F(Worlds, WithoutPixelsAreRefused) {
  for (const Rect& bounds : {Rect{0, 0, 0, 5}, Rect{0, 0, 5, 0}, Rect{5, 5, 4, 4}}) {
    EXPECT_EQ(Refusal(32, &bounds), -50);
  }
  EXPECT_EQ(Refusal(32, nullptr), -50);
}

TEST_F(Worlds, NeedAPlaceForThePointer) {
  const Rect bounds = Sized(4, 4);
  EXPECT_EQ(NewGWorld(nullptr, 32, &bounds, nullptr, nullptr, 0), -50);
  EXPECT_EQ(QDE_Error(), -50);
}

TEST_F(Worlds, TakeThePublishedFlagsOnly) {
  const Rect bounds = Sized(4, 4);
  EXPECT_EQ(Refusal(32, &bounds, 0x40), -50);
  EXPECT_EQ(Refusal(32, &bounds, kFailedBit), -50);
  DisposeGWorld(Make(32, bounds, 0x3F));
}

TEST_F(Worlds, KeepACopyOfTheirColorTable) {
  const Rect bounds = Sized(4, 4);
  QDE_ColorTable table{1024, 0, 1, {{0, {1, 2, 3}}, {9, {0xFFFF, 0, 0}}}};
  QDE_ColorTable* master = &table;
  GWorldPtr world = nullptr;
  ASSERT_EQ(NewGWorld(&world, 8, &bounds, &master, nullptr, 0), 0);
  table = {};
  const QDE_ColorTable& copy = **MapOf(world).pmTable;
  EXPECT_EQ(copy.ctSeed, 1024);
  EXPECT_EQ(copy.ctSize, 1);
  EXPECT_EQ(copy.ctTable[0].rgb.blue, 3);
  EXPECT_EQ(copy.ctTable[1].value, 9);
  EXPECT_EQ(copy.ctTable[1].rgb.red, 0xFFFF);
  DisposeGWorld(world);
  // The standard one is shared.
  ASSERT_EQ(NewGWorld(&world, 8, &bounds, QDE_StandardColors(), nullptr, 0), 0);
  EXPECT_EQ(MapOf(world).pmTable, QDE_StandardColors());
  DisposeGWorld(world);
}

TEST_F(Worlds, WithADeviceOfAnotherHaveItsColorTable) {
  const Rect bounds = Sized(4, 4);
  QDE_ColorTable table{1024, 0, 0, {{0, {0xFFFF, 0, 0}}}};
  QDE_ColorTable* master = &table;
  GWorldPtr owner = nullptr;
  ASSERT_EQ(NewGWorld(&owner, 8, &bounds, &master, nullptr, 0), 0);
  GWorldPtr guest = nullptr;
  ASSERT_EQ(NewGWorld(&guest, 32, &bounds, nullptr, GetGWorldDevice(owner), QDE_Flag_NO_NEW_DEVICE),
            0);
  EXPECT_EQ((**MapOf(guest).pmTable).ctSeed, 1024);
  // Of its own, since the owner's goes with the owner.
  EXPECT_NE(MapOf(guest).pmTable, MapOf(owner).pmTable);
  DisposeGWorld(guest);
  DisposeGWorld(owner);
}

TEST_F(Worlds, TakeSoundColorTablesOnly) {
  const Rect bounds = Sized(4, 4);
  QDE_ColorTable table{};
  QDE_ColorTable* master = &table;
  for (const std::int16_t size : std::initializer_list<std::int16_t>{-1, 256, -0x8000}) {
    table.ctSize = size;
    EXPECT_EQ(Refusal(8, &bounds, 0, &master), -50);
  }
  QDE_ColorTable* none = nullptr;
  EXPECT_EQ(Refusal(8, &bounds, 0, &none), -50);
  // Direct pixels have no use for one.
  GWorldPtr world = nullptr;
  EXPECT_EQ(NewGWorld(&world, 32, &bounds, &none, nullptr, 0), 0);
  DisposeGWorld(world);
}

TEST_F(Worlds, OfDepthZeroGoByTheMainDevice) {
  GWorldPtr world = Make(0, Sized(4, 4));
  EXPECT_EQ(MapOf(world).pixelSize, 32);
  EXPECT_EQ(GetGWorldDevice(world), QDE_MainDevice());
  DisposeGWorld(world);
}

TEST_F(Worlds, ShareADeviceWhenTheyMayNotHaveTheirOwn) {
  const Rect bounds = Sized(4, 4);
  GWorldPtr indexed = Make(8, bounds);
  const GDHandle device = GetGWorldDevice(indexed);
  GWorldPtr world = nullptr;
  // The device counts, not the depth that is asked for.
  EXPECT_EQ(NewGWorld(&world, 32, &bounds, nullptr, device, QDE_Flag_NO_NEW_DEVICE), 0);
  EXPECT_EQ(MapOf(world).pixelSize, 8);
  EXPECT_EQ(GetGWorldDevice(world), device);
  DisposeGWorld(world);
  // Without the flag it is not looked at.
  EXPECT_EQ(NewGWorld(&world, 32, &bounds, nullptr, device, 0), 0);
  EXPECT_NE(GetGWorldDevice(world), device);
  DisposeGWorld(world);
  world = Make(8, bounds, QDE_Flag_NO_NEW_DEVICE);
  EXPECT_EQ(MapOf(world).pixelSize, 8);
  EXPECT_EQ(GetGWorldDevice(world), QDE_MainDevice());
  DisposeGWorld(world);
  DisposeGWorld(indexed);
  EXPECT_EQ(Refusal(32, &bounds, QDE_Flag_NO_NEW_DEVICE, nullptr, device), -50);
}

TEST_F(Worlds, AreRefusedWhenMemoryIsShort) {
  K_SetMemoryBudget(10000);
  const Rect bounds = Sized(100, 100);
  EXPECT_EQ(Refusal(32, &bounds), -108);
  GWorldPtr smaller = Make(8, Sized(100, 80));
  DisposeGWorld(smaller);
}

TEST_F(Worlds, MayPurgeOthersToHaveRoom) {
  GWorldPtr spare = Make(32, Sized(100, 100), QDE_Flag_PIX_PURGE);
  K_SetMemoryBudget(50000);
  GWorldPtr world = Make(32, Sized(100, 100));
  EXPECT_EQ(LockPixels(GetPortPixMap(spare)), 0);
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
  DisposeGWorld(spare);
}

TEST_F(Worlds, MoveUnlockedBlocksWhenTheyAreMade) {
  GWorldPtr first = Make(32, Sized(3, 3));
  Fill(first, 0x3C);
  const std::uint8_t* before = PixelsOf(first);
  GWorldPtr second = Make(32, Sized(3, 3));
  EXPECT_NE(PixelsOf(first), before);
  EXPECT_EQ(Bytes(first), std::vector<std::uint8_t>(48, 0x3C));
  DisposeGWorld(second);
  DisposeGWorld(first);
}

TEST_F(Worlds, StayInPlaceWithoutScrambling) {
  K_SetScramble(0);
  GWorldPtr first = Make(32, Sized(3, 3));
  const std::uint8_t* before = PixelsOf(first);
  GWorldPtr second = Make(32, Sized(3, 3));
  EXPECT_EQ(PixelsOf(first), before);
  DisposeGWorld(second);
  DisposeGWorld(first);
}

TEST_F(Worlds, FailOnceWhenToldTo) {
  const Rect bounds = Sized(4, 4);
  QDE_FailNextCall(QDE_Call_NEW_GWORLD, -153);
  EXPECT_EQ(Refusal(32, &bounds), -153);
  DisposeGWorld(Make(32, bounds));
  QDE_FailNextCall(QDE_Call_NEW_GWORLD, -108);
  QDE_FailNextCall(QDE_Call_NEW_GWORLD, 0);
  DisposeGWorld(Make(32, bounds));
  QDE_FailNextCall(QDE_CallCount, -108);
  QDE_FailNextCall(-1, -108);
  DisposeGWorld(Make(32, bounds));
}

TEST_F(Worlds, MayBeNullOrGone) {
  GWorldPtr gone = Make(32, Sized(4, 4));
  const PixMapHandle map = GetPortPixMap(gone);
  DisposeGWorld(gone);
  const std::pair<GWorldPtr, PixMapHandle> cases[] = {{nullptr, nullptr}, {gone, map}};
  for (const auto& [world, pixels] : cases) {
    DisposeGWorld(world);
    UnlockPixels(pixels);
    EXPECT_EQ(GetGWorldDevice(world), nullptr);
    EXPECT_EQ(GetPortPixMap(world), nullptr);
    EXPECT_EQ(GetPortBitMapForCopyBits(world), nullptr);
    EXPECT_EQ(QDE_Error(), -50);
    EXPECT_EQ(LockPixels(pixels), 0);
    EXPECT_EQ(GetPixBaseAddr(pixels), nullptr);
    EXPECT_EQ(QDE_Error(), -50);
  }
}

TEST_F(Worlds, ShowTheirPixelMapAsABitmap) {
  GWorldPtr world = Make(32, Sized(4, 4));
  const BitMap* bits = GetPortBitMapForCopyBits(world);
  EXPECT_EQ(static_cast<const void*>(bits), static_cast<const void*>(&MapOf(world)));
  EXPECT_EQ(QDE_Error(), 0);
  DisposeGWorld(world);
}

}  // namespace
