// Locking, purging and stored handles of pixels.
#include "tests/support/drawing/surfaces.h"

namespace {

class Pixels : public Surfaces {
 protected:
  static Handle StoredHandle(GWorldPtr world) {
    return reinterpret_cast<Handle>(MapOf(world).baseAddr);
  }
};

TEST_F(Pixels, AreShownByTheirHandleWhileUnlockedAndByTheirAddressWhileLocked) {
  GWorldPtr world = Make(32, Sized(8, 4));
  const PixMapHandle map = GetPortPixMap(world);
  const Handle handle = StoredHandle(world);
  EXPECT_TRUE(K_IsHandle(handle));
  EXPECT_EQ(K_GetHandleSize(handle), 128U);
  EXPECT_EQ(GetPixBaseAddr(map), *handle);

  EXPECT_EQ(LockPixels(map), 1);
  EXPECT_EQ(MapOf(world).baseAddr, *handle);
  EXPECT_EQ(GetPixBaseAddr(map), *handle);
  EXPECT_TRUE(K_IsHandleLocked(handle));

  UnlockPixels(map);
  EXPECT_EQ(StoredHandle(world), handle);
  EXPECT_FALSE(K_IsHandleLocked(handle));
  DisposeGWorld(world);
}

TEST_F(Pixels, StayWhileLockedAndMoveOtherwise) {
  GWorldPtr world = Make(8, Sized(8, 4));
  const PixMapHandle map = GetPortPixMap(world);
  const PixMap* record = *map;
  ASSERT_EQ(LockPixels(map), 1);
  const Ptr base = GetPixBaseAddr(map);
  K_FreeHandle(NewEmptyHandle());
  DisposeGWorld(Make(8, Sized(2, 2)));
  EXPECT_EQ(GetPixBaseAddr(map), base);
  UnlockPixels(map);
  K_FreeHandle(NewEmptyHandle());
  EXPECT_NE(GetPixBaseAddr(map), base);
  EXPECT_EQ(*map, record);
  DisposeGWorld(world);
}

TEST_F(Pixels, AreReleasedByOneUnlockHoweverOftenTheyWereLocked) {
  GWorldPtr world = Make(8, Sized(8, 4));
  const PixMapHandle map = GetPortPixMap(world);
  const Handle handle = StoredHandle(world);
  EXPECT_EQ(LockPixels(map), 1);
  EXPECT_EQ(LockPixels(map), 1);
  UnlockPixels(map);
  EXPECT_EQ(StoredHandle(world), handle);
  EXPECT_FALSE(K_IsHandleLocked(handle));
  UnlockPixels(map);
  EXPECT_EQ(StoredHandle(world), handle);
  DisposeGWorld(world);
}

TEST_F(Pixels, AreKeptUnderPressureUnlessPurgeable) {
  GWorldPtr world = Make(8, Sized(8, 4));
  Fill(world, 0x77);
  Press();
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  EXPECT_EQ(Bytes(world), std::vector<std::uint8_t>(64, 0x77));
  DisposeGWorld(world);
}

TEST_F(Pixels, ArePurgedUnderPressureWhileUnlocked) {
  GWorldPtr world = Make(32, Sized(8, 4), QDE_Flag_PIX_PURGE);
  const PixMapHandle map = GetPortPixMap(world);
  ASSERT_EQ(LockPixels(map), 1);
  Press();
  EXPECT_NE(GetPixBaseAddr(map), nullptr);
  UnlockPixels(map);
  EXPECT_EQ(LockPixels(map), 1);
  UnlockPixels(map);
  Press();

  const Handle handle = StoredHandle(world);
  EXPECT_EQ(*handle, nullptr);
  EXPECT_EQ(GetPixBaseAddr(map), nullptr);
  EXPECT_EQ(LockPixels(map), 0);
  EXPECT_FALSE(K_IsHandleLocked(handle));
  EXPECT_EQ(StoredHandle(world), handle);
  UnlockPixels(map);
  EXPECT_EQ(StoredHandle(world), handle);
  DisposeGWorld(world);
}

TEST_F(Pixels, ArePurgedByABudgetWithoutHarmToTheRest) {
  K_SetMemoryBudget(40 * 1024);
  GWorldPtr kept = Make(8, Sized(64, 64));
  Fill(kept, 0x11);
  GWorldPtr spare = Make(8, Sized(64, 256), QDE_Flag_PIX_PURGE);
  GWorldPtr wanted = Make(8, Sized(64, 500));
  Fill(wanted, 0x22);
  EXPECT_EQ(GetPixBaseAddr(GetPortPixMap(spare)), nullptr);
  EXPECT_EQ(Bytes(kept), std::vector<std::uint8_t>(4096, 0x11));
  // No room to revive them, and the world stays as it is.
  const Rect bounds = Sized(64, 256);
  EXPECT_EQ(Update(&spare, 8, bounds), AsResult(-108));
  EXPECT_EQ(LockPixels(GetPortPixMap(spare)), 0);
  DisposeGWorld(wanted);
  EXPECT_EQ(Update(&spare, 8, bounds), std::uint32_t{QDE_Flag_REALLOC_PIX});
  EXPECT_EQ(LockPixels(GetPortPixMap(spare)), 1);
  DisposeGWorld(spare);
  DisposeGWorld(kept);
}

TEST_F(Pixels, RevivedByAnUpdateArePurgeableAsBefore) {
  GWorldPtr world = Make(8, Sized(8, 4), QDE_Flag_PIX_PURGE);
  for (int round = 0; round < 3; ++round) {
    Press();
    EXPECT_EQ(LockPixels(GetPortPixMap(world)), 0);
    EXPECT_EQ(Update(&world, 8, Sized(8, 4)), std::uint32_t{QDE_Flag_REALLOC_PIX});
    EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
    UnlockPixels(GetPortPixMap(world));
  }
  DisposeGWorld(world);
}

TEST_F(Pixels, CountAsPurgedWhenACallerStoresAnEmptyHandle) {
  GWorldPtr world = Make(8, Sized(8, 4));
  const PixMapHandle map = GetPortPixMap(world);
  const Handle empty = NewEmptyHandle();
  (*map)->baseAddr = reinterpret_cast<Ptr>(empty);
  EXPECT_EQ(LockPixels(map), 0);
  EXPECT_EQ(GetPixBaseAddr(map), nullptr);
  UnlockPixels(map);
  EXPECT_EQ(StoredHandle(world), empty);
  EXPECT_EQ(Update(&world, 8, Sized(8, 4)), std::uint32_t{QDE_Flag_REALLOC_PIX});
  EXPECT_FALSE(K_IsHandle(empty));
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

TEST_F(Pixels, CountAsPurgedAlsoWhenTheyWereLocked) {
  GWorldPtr world = Make(8, Sized(8, 4));
  const PixMapHandle map = GetPortPixMap(world);
  ASSERT_EQ(LockPixels(map), 1);
  (*map)->baseAddr = reinterpret_cast<Ptr>(NewEmptyHandle());
  EXPECT_EQ(GetPixBaseAddr(map), nullptr);
  EXPECT_EQ(LockPixels(map), 0);
  DisposeGWorld(world);
}

// The handle that a caller stored last is the surface's to free.
TEST_F(Pixels, LeaveNoStoredHandleBehind) {
  GWorldPtr world = Make(8, Sized(8, 4));
  MapOf(world).baseAddr = reinterpret_cast<Ptr>(NewEmptyHandle());
  DisposeGWorld(world);
}

TEST_F(Pixels, CountAsPurgedWhenTheBlockIsTooSmall) {
  GWorldPtr world = Make(8, Sized(8, 4));
  MapOf(world).baseAddr = reinterpret_cast<Ptr>(K_NewHandle(63));
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 0);
  EXPECT_EQ(GetPixBaseAddr(GetPortPixMap(world)), nullptr);
  DisposeGWorld(world);
}

TEST_F(Pixels, AreNotThereWithoutABaseAddress) {
  GWorldPtr world = Make(8, Sized(8, 4));
  MapOf(world).baseAddr = nullptr;
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 0);
  EXPECT_EQ(GetPixBaseAddr(GetPortPixMap(world)), nullptr);
  EXPECT_EQ(Update(&world, 8, Sized(8, 4)), std::uint32_t{QDE_Flag_REALLOC_PIX});
  EXPECT_EQ(LockPixels(GetPortPixMap(world)), 1);
  DisposeGWorld(world);
}

}  // namespace
