// Worlds with a surface of the drawing layer.
#include <cstring>
#include <tuple>

#include "tests/support/host/whole.h"

using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

constexpr const char* kTooLittleMemory = "Unable to allocate enough memory to render";

std::size_t ByteCount(PXL_WorldHandle worldH) {
  return static_cast<std::size_t>(Record(worldH).pixels.rowBytes) *
         static_cast<std::size_t>(Record(worldH).height);
}

// All bytes of the rows, padding included.
std::string Bytes(PXL_WorldHandle worldH) {
  return {static_cast<const char*>(PXLp_GetPixBaseAddr(worldH)), ByteCount(worldH)};
}

PixMap& MapOf(PXL_WorldHandle worldH) {
  return **GetPortPixMap(Record(worldH).gworld);
}

// All members that an update may change.
auto Members(const PXL_World& world) {
  return std::tuple(world.headMark, world.flags, world.width, world.height, world.bounds.top,
                    world.bounds.left, world.bounds.bottom, world.bounds.right, world.depth,
                    world.gworld, world.gdevice, world.hasGWorld, world.pixels.lockCount,
                    world.pixels.frame, world.pixels.frameSize, world.pixels.baseAddr,
                    world.pixels.rowBytes, world.tailMark);
}

// Takes the pixels of all purgeable surfaces that are not locked.
void Press() {
  K_PurgeHandlesAndCompact();
}

std::string TextOf(const KeptReport& report) {
  return report.text;
}

}  // namespace

class SurfaceWorlds : public Whole, public ::testing::WithParamInterface<std::int32_t> {
 protected:
  PXL_WorldHandle MakePurged(std::int32_t depth = PXL_Depth_32) {
    PXL_WorldHandle worldH = MakeSurface(depth, 30, 20, PXL_Flag_PURGEABLE);
    Press();
    return worldH;
  }
  // A lock that finds no purge.
  static void ExpectUsable(PXL_WorldHandle worldH) {
    std::uint8_t purged = 9;
    EXPECT_EQ(PXL_LockPixels(0, worldH, &purged), PXL_Err_NONE);
    EXPECT_EQ(purged, 0);
    ASSERT_NE(Record(worldH).pixels.baseAddr, nullptr);
    std::memset(Record(worldH).pixels.baseAddr, 0x66, ByteCount(worldH));
    PXL_UnlockPixels(worldH);
  }
  static void ExpectPurged(PXL_WorldHandle worldH) {
    std::uint8_t purged = 9;
    EXPECT_EQ(PXL_LockPixels(0, worldH, &purged), PXL_Err_NONE);
    EXPECT_EQ(purged, 1);
    EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
    EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  }
  void ExpectOneReport(std::uint32_t code, std::int32_t error, const char* start) {
    ASSERT_EQ(Reports().size(), 1U);
    EXPECT_EQ(Reports()[0].code, code);
    EXPECT_EQ(Reports()[0].error, error);
    EXPECT_THAT(Reports()[0].text, StartsWith(start));
    ForgetReports();
  }
};

TEST_P(SurfaceWorlds, AreMadeClearedWithTheGeometryOfTheSurface) {
  const Rect bounds{10, 20, 110, 221};
  PXL_WorldHandle worldH =
      MakeSurface(GetParam(), bounds, PXL_Flag_CLEAR | PXL_Flag_KEEP_LOCAL | PXL_Flag_PURGEABLE);
  const PXL_World& world = Record(worldH);
  EXPECT_EQ(world.hasGWorld, 1);
  EXPECT_EQ(world.hasFrame, 0);
  EXPECT_EQ(world.gdevice, GetGWorldDevice(world.gworld));
  EXPECT_EQ(world.depth, GetParam());
  EXPECT_EQ(world.width, 201);
  EXPECT_EQ(world.height, 100);
  EXPECT_EQ(world.pixels.rowBytes, GetParam() == 8 ? 208 : 816);
  EXPECT_EQ(MapOf(worldH).bounds.left, 20);
  EXPECT_EQ(Bytes(worldH), std::string(ByteCount(worldH), '\0'));
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_P(SurfaceWorlds, KeepTheirPixelsFromLockToLock) {
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 37, 11, PXL_Flag_CLEAR);
  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  void* base = Record(worldH).pixels.baseAddr;
  std::memset(base, 0x3C, ByteCount(worldH));
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  PXL_WorldHandle other = MakeSurface(GetParam(), 3, 3);
  EXPECT_NE(PXLp_GetPixBaseAddr(worldH), base);
  EXPECT_EQ(Bytes(worldH), std::string(ByteCount(worldH), 0x3C));
  Dispose(other);
  Dispose(worldH);
}

TEST_P(SurfaceWorlds, StayInPlaceUntilTheLastUnlock) {
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 37, 11, PXL_Flag_PURGEABLE);
  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  void* base = Record(worldH).pixels.baseAddr;
  PXL_UnlockPixels(worldH);
  Dispose(MakeSurface(GetParam(), 3, 3));
  Press();
  EXPECT_EQ(Record(worldH).pixels.baseAddr, base);
  EXPECT_EQ(MapOf(worldH).baseAddr, base);
  std::memset(base, 1, ByteCount(worldH));
  PXL_UnlockPixels(worldH);
  Press();
  ExpectPurged(worldH);
  Dispose(worldH);
}

TEST_P(SurfaceWorlds, AreNotPurgedUnlessPurgeable) {
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 30, 20);
  Press();
  ExpectUsable(worldH);
  Dispose(worldH);
}

TEST_P(SurfaceWorlds, AreFilledUnlocked) {
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 13, 7);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 0x11111111), PXL_Err_NONE);
  EXPECT_EQ(Bytes(worldH), std::string(ByteCount(worldH), 0x11));
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_EQ(Bytes(worldH), std::string(ByteCount(worldH), 0));
  Dispose(worldH);
}

TEST_P(SurfaceWorlds, TellThatTheyWerePurged) {
  PXL_WorldHandle worldH = MakePurged(GetParam());
  ExpectPurged(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_PURGED);
  ExpectOneReport(0x70033, 0, "pixel buffer purged!");
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  Dispose(worldH);
}

TEST_P(SurfaceWorlds, AreReloadedWhenPurged) {
  PXL_WorldHandle worldH = MakePurged(GetParam());
  std::uint8_t loaded = 9;
  std::uint8_t reloaded = 9;
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded, &reloaded), PXL_Err_NONE);
  EXPECT_EQ(loaded, 1);
  EXPECT_EQ(reloaded, 1);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 1);
  ASSERT_NE(Record(worldH).pixels.baseAddr, nullptr);
  std::memset(Record(worldH).pixels.baseAddr, 7, ByteCount(worldH));
  // Locked again, they are not reloaded again.
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded, &reloaded), PXL_Err_NONE);
  EXPECT_EQ(loaded, 1);
  EXPECT_EQ(reloaded, 0);
  PXL_UnlockPixels(worldH);
  PXL_UnlockPixels(worldH);
  Press();
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, nullptr, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 1);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(BothDepths, SurfaceWorlds, ::testing::Values(8, 32));

class MakingSurfaces : public SurfaceWorlds {};

TEST_F(MakingSurfaces, FailsInTheWordsOfShortage) {
  K_SetMemoryBudget(100000);
  EXPECT_EQ(FailToMake(32, 200, 200), QDE_Err_MEMORY_FULL);
  ExpectOneReport(0x70027, 0, kTooLittleMemory);
}

TEST_F(MakingSurfaces, FailsForRowsThatTheLayerCannotDescribe) {
  EXPECT_EQ(FailToMake(32, 4096, 1), QDE_Err_PARAMETER);
  ExpectOneReport(0x70027, QDE_Err_PARAMETER, "changing pixel buffer.");
}

TEST_F(MakingSurfaces, FailsForDepthsThatTheLayerHasNot) {
  EXPECT_EQ(FailToMake(16, 10, 10), -157);
  ExpectOneReport(0x70027, -157, "changing pixel buffer.");
}

class ReloadingSurfaces : public SurfaceWorlds {
 protected:
  std::uint8_t loaded_ = 9;
  std::uint8_t reloaded_ = 9;
};

TEST_F(ReloadingSurfaces, IsToldToHaveFailedWhenMemoryIsShort) {
  PXL_WorldHandle worldH = MakePurged();
  K_SetMemoryBudget(1);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 0);
  EXPECT_EQ(reloaded_, 0);
  ExpectPurged(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
  K_SetMemoryBudget(0);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 1);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
}

TEST_F(ReloadingSurfaces, IsReportedWhenMemoryIsShortAndNobodyIsTold) {
  PXL_WorldHandle worldH = MakePurged();
  K_SetMemoryBudget(1);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, nullptr, &reloaded_), QDE_Err_MEMORY_FULL);
  EXPECT_EQ(reloaded_, 0);
  ExpectOneReport(0x70034, 0, kTooLittleMemory);
  ExpectPurged(worldH);
  Dispose(worldH);
}

TEST_F(ReloadingSurfaces, IsReportedWhenItFailsOtherwise) {
  PXL_WorldHandle worldH = MakePurged();
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, QDE_Err_PARAMETER);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), QDE_Err_PARAMETER);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(reloaded_, 0);
  ExpectOneReport(0x70034, QDE_Err_PARAMETER, "changing pixel buffer.");
  Dispose(worldH);
}

TEST_F(ReloadingSurfaces, SucceedsAfterAnUpdateLostThePixels) {
  PXL_WorldHandle worldH = MakePurged();
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, QDE_Err_MEMORY_FULL);
  QDE_LosePixelsInFailedUpdates(1);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 0);
  // An empty handle stands there now: purged, not broken.
  EXPECT_TRUE(K_IsHandle(MapOf(worldH).baseAddr));
  ExpectPurged(worldH);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), PXL_Err_NONE);
  EXPECT_EQ(reloaded_, 1);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(ReloadingSurfaces, RefusesAnotherSurface) {
  PXL_WorldHandle worldH = MakePurged();
  const GWorldPtr surface = Record(worldH).gworld;
  QDE_ReplaceWorldInUpdates(1);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_), PXL_Err_FAILED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_EQ(Record(worldH).gworld, surface);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
  ASSERT_EQ(Reports().size(), 2U);
  EXPECT_EQ(Reports()[0].code, 0x70034U);
  EXPECT_EQ(TextOf(Reports()[0]), "strange change in pixel buffer.");
  EXPECT_EQ(Reports()[1].code, 0x70034U);
  EXPECT_EQ(Reports()[1].error, 1);
  EXPECT_THAT(Reports()[1].text, StartsWith("changing pixel buffer."));
  // The World's own pointer still means the surface.
  ExpectUsable(worldH);
  Dispose(worldH);
}

class UpdatingSurfaces : public SurfaceWorlds {
 protected:
  // An update that fails leaves the record as it was.
  static void ExpectFailure(PXL_WorldHandle worldH, std::int32_t depth, const Rect& rect,
                            std::int32_t status) {
    const PXL_World before = Record(worldH);
    EXPECT_EQ(PXL_UpdateWorld(depth, &rect, 0, nullptr, worldH), status);
    EXPECT_TRUE(Members(Record(worldH)) == Members(before));
  }
};

TEST_P(UpdatingSurfaces, ChangesTheSizeAndMovesTheBoundsToTheOrigin) {
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 30, 20);
  const Rect larger{5, 7, 105, 208};
  EXPECT_EQ(PXL_UpdateWorld(0, &larger, 12345, nullptr, worldH), PXL_Err_NONE);
  const PXL_World& world = Record(worldH);
  EXPECT_EQ(world.width, 201);
  EXPECT_EQ(world.height, 100);
  EXPECT_EQ(world.bounds.top, 0);
  EXPECT_EQ(world.bounds.left, 0);
  EXPECT_EQ(world.depth, GetParam());
  EXPECT_EQ(world.pixels.rowBytes, GetParam() == 8 ? 208 : 816);
  EXPECT_EQ(world.gdevice, GetGWorldDevice(world.gworld));
  ExpectUsable(worldH);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_P(UpdatingSurfaces, ChangesTheDepthAndBack) {
  const std::int32_t other = 40 - GetParam();
  PXL_WorldHandle worldH = MakeSurface(GetParam(), 30, 20);
  EXPECT_EQ(PXL_UpdateWorld(other, nullptr, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).depth, other);
  EXPECT_EQ(Record(worldH).pixels.rowBytes, other == 8 ? 32 : 128);
  ExpectUsable(worldH);
  EXPECT_EQ(PXL_UpdateWorld(GetParam(), nullptr, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).depth, GetParam());
  ExpectUsable(worldH);
  Dispose(worldH);
}

INSTANTIATE_TEST_SUITE_P(BothDepths, UpdatingSurfaces, ::testing::Values(8, 32));

TEST_F(UpdatingSurfaces, WithNothingNewKeepsThePixels) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 0x22222222), PXL_Err_NONE);
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_EQ(Bytes(worldH), std::string(ByteCount(worldH), 0x22));
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, RevivesPurgedPixels) {
  PXL_WorldHandle worldH = MakePurged();
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, 0, nullptr, worldH), PXL_Err_NONE);
  ExpectUsable(worldH);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, WithoutMemoryLeavesTheWorldAsItWas) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  K_SetMemoryBudget(100000);
  ExpectFailure(worldH, 0, {0, 0, 500, 500}, QDE_Err_MEMORY_FULL);
  ExpectOneReport(0x7001A, 0, kTooLittleMemory);
  ExpectUsable(worldH);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, PurgesOthersAfterAShortage) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  PXL_WorldHandle spare = MakeSurface(32, 30, 20, PXL_Flag_PURGEABLE);
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, QDE_Err_MEMORY_FULL);
  ExpectFailure(worldH, 0, {0, 0, 31, 31}, QDE_Err_MEMORY_FULL);
  ExpectOneReport(0x7001A, 0, kTooLittleMemory);
  ExpectPurged(spare);
  Dispose(spare);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, ThatIsRefusedIsToldInTheLayersWords) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  ExpectFailure(worldH, 0, {0, 0, 1, 4096}, QDE_Err_PARAMETER);
  ExpectOneReport(0x7001A, QDE_Err_PARAMETER, "changing pixel buffer.");
  ExpectFailure(worldH, 0, {0, 0, 0, 0}, QDE_Err_PARAMETER);
  ExpectOneReport(0x7001A, QDE_Err_PARAMETER, "changing pixel buffer.");
  ExpectFailure(worldH, 64, {0, 0, 20, 30}, -157);
  ExpectOneReport(0x7001A, -157, "changing pixel buffer.");
  ExpectUsable(worldH);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, ThatLosesThePixelsLeavesThemToBeReloaded) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  QDE_LosePixelsInFailedUpdates(1);
  ExpectFailure(worldH, 16, {0, 0, 20, 30}, -157);
  QDE_LosePixelsInFailedUpdates(0);
  ExpectPurged(worldH);
  std::uint8_t loaded = 9;
  std::uint8_t reloaded = 9;
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded, &reloaded), PXL_Err_NONE);
  EXPECT_EQ(loaded, 1);
  EXPECT_EQ(reloaded, 1);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, ThatLosesThePixelsLeavesNothingBehind) {
  PXL_WorldHandle worldH = MakeSurface(8, 30, 20);
  QDE_LosePixelsInFailedUpdates(1);
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, QDE_Err_MEMORY_FULL);
  ExpectFailure(worldH, 0, {0, 0, 10, 10}, QDE_Err_MEMORY_FULL);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, TakesOverAnotherSurface) {
  PXL_WorldHandle worldH = MakeSurface(8, 30, 20);
  const GWorldPtr surface = Record(worldH).gworld;
  QDE_ReplaceWorldInUpdates(1);
  EXPECT_EQ(PXL_UpdateWorld(32, nullptr, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_NE(Record(worldH).gworld, surface);
  EXPECT_EQ(Record(worldH).depth, 32);
  ExpectUsable(worldH);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(UpdatingSurfaces, ThatFailsDoesNotTakeOverAnotherSurface) {
  PXL_WorldHandle worldH = MakeSurface(8, 30, 20);
  QDE_ReplaceWorldInUpdates(1);
  QDE_FailNextCall(QDE_Call_UPDATE_GWORLD, QDE_Err_PARAMETER);
  ExpectFailure(worldH, 0, {0, 0, 10, 10}, QDE_Err_PARAMETER);
  ExpectUsable(worldH);
  Dispose(worldH);
}

TEST_F(UpdatingSurfaces, IsRefusedWhileTheyAreLocked) {
  PXL_WorldHandle worldH = MakeSurface(32, 30, 20);
  {
    const Locked locked(worldH);
    ExpectFailure(worldH, 0, {0, 0, 10, 10}, PXL_Err_REFUSED);
  }
  ExpectOneReport(0x7001A, 0, "can’t refresh a locked pixel buffer.");
  PXL_UnlockPixels(worldH);
  ExpectOneReport(0x70028, 0, "unbalanced unlock.");
  ExpectFailure(worldH, 0, {0, 0, 10, 10}, PXL_Err_REFUSED);
  Dispose(worldH);
}

class OrderOfSurfaces : public SurfaceWorlds {
 protected:
  // Preset to a value that no call returns.
  static std::uint32_t OrderOf(PXL_WorldHandle worldH, std::int32_t status = 0) {
    std::uint32_t order = 77;
    EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), status);
    return order;
  }
};

TEST_F(OrderOfSurfaces, IsTheFormatOfTheLayer) {
  PXL_WorldHandle worldH = MakeSurface(32, 3, 2, PXL_Flag_CLEAR);
  EXPECT_EQ(OrderOf(worldH), 0U);
  PixelAt<PXL_Pixel8>(worldH, 2, 1) = {{1, 2, 3, 4}};
  EXPECT_EQ(PXL_SetChannelOrder(worldH, PXL_ChannelOrder_ALTERNATE), PXL_Err_NONE);
  EXPECT_EQ(OrderOf(worldH), 1U);
  EXPECT_EQ(Record(worldH).flags & PXL_Flag_ALT_ORDER, 0U);
  EXPECT_EQ(PixelAt<PXL_Pixel8>(worldH, 2, 1).channel[0], 4);
  // The recorded order counts for Worlds without a surface only.
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(OrderOf(worldH), 1U);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 5), PXL_Err_NONE);
  EXPECT_EQ(OrderOf(worldH), 0U);
  EXPECT_EQ(PixelAt<PXL_Pixel8>(worldH, 2, 1).channel[0], 1);
  Dispose(worldH);
}

TEST_F(OrderOfSurfaces, IsUnknownAt8Bits) {
  PXL_WorldHandle worldH = MakeSurface(8, 3, 2);
  EXPECT_EQ(OrderOf(worldH, QDE_Err_PARAMETER), 77U);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_REFUSED);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_THAT(Reports()[0].text, ::testing::HasSubstr("Unable to set ChannelOrder"));
  Dispose(worldH);
}

TEST_F(OrderOfSurfaces, PassesErrorsOfTheLayerOn) {
  PXL_WorldHandle worldH = MakeSurface(32, 3, 2);
  QDE_FailNextCall(QDE_Call_GET_PIXMAP_FORMAT, QDE_Err_MEMORY_FULL);
  EXPECT_EQ(OrderOf(worldH, QDE_Err_MEMORY_FULL), 77U);
  QDE_FailNextCall(QDE_Call_SET_PIXMAP_FORMAT, QDE_Err_PARAMETER);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), QDE_Err_PARAMETER);
  EXPECT_EQ(OrderOf(worldH), 0U);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

class CrowdsOfWorlds : public SurfaceWorlds {};

TEST_F(CrowdsOfWorlds, GiveUpTheirSurfacesBeforeTheirFrames) {
  PXL_WorldHandle spare = MakeSurface(32, 512, 512, PXL_Flag_PURGEABLE);
  PXL_WorldHandle kept = MakeSurface(32, 64, 64);
  PXL_WorldHandle frame = Make(64, 64, 64);
  EXPECT_EQ(PXL_ClearWorldToLong(kept, 0x33333333), PXL_Err_NONE);
  EXPECT_EQ(PXL_ClearWorldToLong(frame, 0x44444444), PXL_Err_NONE);
  K_SetMemoryBudget(3 << 20);
  PXL_WorldHandle large = Make(128, 384, 400);
  ASSERT_NE(large, nullptr);
  ExpectPurged(spare);
  EXPECT_EQ(Bytes(kept), std::string(ByteCount(kept), 0x33));
  EXPECT_EQ(Bytes(frame), std::string(ByteCount(frame), 0x44));
  for (PXL_WorldHandle worldH : {large, frame, kept, spare}) Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

TEST_F(CrowdsOfWorlds, MixSurfacesAndFrames) {
  std::vector<PXL_WorldHandle> worlds;
  for (int i = 1; i <= 20; ++i) {
    worlds.push_back(i % 2 == 0 ? Make(64, i, i) : MakeSurface(i % 4 == 1 ? 8 : 32, i, i));
    EXPECT_EQ(PXL_ClearWorldToLong(worlds.back(), i * 0x01010101), PXL_Err_NONE);
  }
  EXPECT_EQ(PXLp_G.worldCount, 20);
  for (int i = 1; i <= 20; ++i) {
    PXL_WorldHandle worldH = worlds[static_cast<std::size_t>(i - 1)];
    const std::string bytes = Bytes(worldH);
    EXPECT_EQ(bytes, std::string(bytes.size(), static_cast<char>(i)));
    Dispose(worldH);
    K_FreeHandle(K_NewEmptyHandle());
  }
}
