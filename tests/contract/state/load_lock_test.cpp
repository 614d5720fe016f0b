// PXL_LoadLockPixels.
#include <type_traits>

#include "tests/contract/state/expected_reports.h"
#include "tests/contract/state/scripted_provider.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

static_assert(
    std::is_same_v<decltype(&PXL_LoadLockPixels),
                   std::int32_t (*)(std::uint32_t, PXL_WorldHandle, std::uint8_t*, std::uint8_t*)>);

class LoadLock : public BornModule {
 protected:
  // Both flags hold 9 before each call.
  std::int32_t LoadAndLock(PXL_WorldHandle worldH) {
    loaded_ = 9;
    reloaded_ = 9;
    return PXL_LoadLockPixels(0, worldH, &loaded_, &reloaded_);
  }
  std::uint8_t loaded_ = 9;
  std::uint8_t reloaded_ = 9;
};

class LoadLockOfPurgedPixels : public LoadLock {
 protected:
  LoadLockOfPurgedPixels() { recorder_.Fail("LockPixels"); }
  void RunOutOfMemory() {
    recorder_.FailAlways("UpdateGWorld");
    recorder_.script.updateGWorldError = kLayerMemoryFull;
  }
  PXL_WorldHandle worldH_ = NewWorld(32, {10, 20, 14, 30});
};

const Calls kPurgedLock = {"GetPortPixMap(gworld1)", "LockPixels(map of gworld1)"};
const Calls kLock = {"GetPortPixMap(gworld1)", "LockPixels(map of gworld1)",
                     "GetPixBaseAddr(map of gworld1)"};
// The surface's own size, from the origin, and no device.
const Calls kUpdate = {"QDE_ForceBitmapCreationBitfields(1, 0, 0)",
                       "UpdateGWorld(gworld1, 32, {0, 0, 4, 10}, null, 0, 0)",
                       "QDE_ForceBitmapCreationBitfields(0, 0, 0)"};
const Calls kOutOfMemory = {"GetPortPixMap(gworld1)", "K_PurgeHandlesAndCompact()"};
const Calls kPurgedReport = {"K_ZLookupLStrCache(28, 0, 0)",
                             R"(Kp_ReportErrString(0x70033, 8, "pixel buffer purged!"))"};

}  // namespace

TEST_F(LoadLock, OfPixelsThatAreThereOnlyLocks) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  EXPECT_EQ(LoadAndLock(worldH), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(kLock));
  EXPECT_EQ(Record(worldH).pixels.lockCount, 1);
}

TEST_F(LoadLock, OfAFrameOnlyLocks) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  EXPECT_EQ(LoadAndLock(worldH), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_NE(Record(worldH).pixels.baseAddr, nullptr);
}

TEST_F(LoadLock, TakesTheWorldSecondAndIgnoresTheFirstArgument) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  EXPECT_EQ(PXL_LoadLockPixels(0xFFFFFFFF, worldH, nullptr, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 1);
}

TEST_F(LoadLock, OfAWorldWithoutPixelsHasNothingToLoad) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4), PXL_Flag_DEFERRED);
  EXPECT_EQ(LoadAndLock(worldH), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
}

TEST_F(LoadLock, OfAProviderThatFailsCountsAsLoaded) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4), PXL_Flag_DEFERRED);
  ScriptedProvider provider(worldH);
  provider.mapStatus = 91;
  EXPECT_EQ(LoadAndLock(worldH), 91);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAre("mapPixels(the World's frame)"));
}

TEST_F(LoadLock, OfADamagedWorldCountsAsLoaded) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  Record(worldH).headMark = 0;
  EXPECT_EQ(LoadAndLock(worldH), PXL_Err_INVALID);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(DamagedWorldReport("0x70033")));
}

TEST_F(LoadLock, OfADamagedWorldNeedsNoFlags) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  Record(worldH).headMark = 0;
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, nullptr, nullptr), PXL_Err_INVALID);
}

TEST_F(LoadLock, WritesOneByteOfEachFlag) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  recorder_.Fail("LockPixels");
  std::uint8_t loaded[3] = {7, 7, 7};
  std::uint8_t reloaded[3] = {7, 7, 7};
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, &loaded[1], &reloaded[1]), PXL_Err_NONE);
  EXPECT_THAT(loaded, ElementsAre(7, 1, 7));
  EXPECT_THAT(reloaded, ElementsAre(7, 1, 7));
}

TEST_F(LoadLockOfPurgedPixels, RecreatesThemAndLocksAgain) {
  EXPECT_EQ(LoadAndLock(worldH_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 1);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kPurgedLock, kUpdate, kLock})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, SurfacePixels(worldH_));
}

TEST_F(LoadLockOfPurgedPixels, WorksOnARecordThatMovesInEveryCall) {
  MoveInEveryCall();
  EXPECT_EQ(LoadAndLock(worldH_), PXL_Err_NONE);
  void* pixels = SurfacePixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, pixels);
  EXPECT_EQ(Record(worldH_).pixels.rowBytes, 48);
}

TEST_F(LoadLockOfPurgedPixels, LocksAgainWhenNobodyAsks) {
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH_, nullptr, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kPurgedLock, kUpdate, kLock})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
}

TEST_F(LoadLockOfPurgedPixels, AsksForLoadingButNotForReloading) {
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH_, &loaded_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
}

TEST_F(LoadLockOfPurgedPixels, AsksForReloadingButNotForLoading) {
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH_, nullptr, &reloaded_), PXL_Err_NONE);
  EXPECT_EQ(reloaded_, 1);
}

TEST_F(LoadLockOfPurgedPixels, ReportsPixelsThatArePurgedOnceMore) {
  recorder_.Fail("LockPixels", 2);
  EXPECT_EQ(LoadAndLock(worldH_), PXL_Err_PURGED);
  EXPECT_EQ(loaded_, 1);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(),
              ElementsAreArray(Together({kPurgedLock, kUpdate, kPurgedLock, kPurgedReport})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(LoadLockOfPurgedPixels, IsQuietWhenMemoryIsShortAndTheCallerAsks) {
  RunOutOfMemory();
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(LoadAndLock(worldH_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 0);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kPurgedLock, kUpdate, kOutOfMemory})));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(LoadLockOfPurgedPixels, ReportsThatMemoryIsShortWhenNobodyAsks) {
  RunOutOfMemory();
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH_, nullptr, &reloaded_), kLayerMemoryFull);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kPurgedLock, kUpdate, kOutOfMemory,
                                                ShortageReport("0x70034", 10, 4, 8)})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(LoadLockOfPurgedPixels, LeavesTheFlagAloneAfterAnyOtherError) {
  recorder_.FailAlways("UpdateGWorld");
  EXPECT_EQ(LoadAndLock(worldH_), kLayerError);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kPurgedLock,
                                                kUpdate,
                                                {"GetPortPixMap(gworld1)"},
                                                BufferReport("0x70034", kLayerError)})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(LoadLockOfPurgedPixels, DoesNotLockASurfaceThatHasMoved) {
  recorder_.script.updateReplacesSurface = true;
  EXPECT_EQ(LoadAndLock(worldH_), PXL_Err_FAILED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(reloaded_, 0);
  EXPECT_EQ(recorder_.Count("LockPixels"), 1);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(LoadLockOfPurgedPixels, LosesNoMemory) {
  LoadAndLock(worldH_);
  PXL_UnlockPixels(worldH_);
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}
