// PXL_LockPixels and PXL_UnlockPixels.
#include <type_traits>

#include "tests/contract/state/expected_reports.h"
#include "tests/contract/state/scripted_provider.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

static_assert(std::is_same_v<decltype(&PXL_LockPixels),
                             std::int32_t (*)(std::uint32_t, PXL_WorldHandle, std::uint8_t*)>);
static_assert(std::is_same_v<decltype(&PXL_UnlockPixels), void (*)(PXL_WorldHandle)>);

class Locking : public BornModule {
 protected:
  PXL_WorldHandle NewWorld(std::int32_t depth, std::uint32_t flags = 0) {
    return BornModule::NewWorld(depth, Sized(10, 4), flags);
  }
};

class SurfaceLock : public Locking {
 protected:
  PXL_WorldHandle worldH_ = NewWorld(32);
};

class FrameLock : public Locking {
 protected:
  FrameLock() {
    recorder_.script.blockOffset = 5;
    worldH_ = NewWorld(64);
  }
  PXL_WorldHandle worldH_ = nullptr;
};

class ProviderLock : public Locking {
 protected:
  PXL_WorldHandle worldH_ = NewWorld(64, PXL_Flag_DEFERRED);
  ScriptedProvider provider_{worldH_};
};

class LockWithoutPixels : public Locking {
 protected:
  PXL_WorldHandle worldH_ = NewWorld(64, PXL_Flag_DEFERRED);
};

class LockOfADamagedWorld : public Locking {};

const Calls kUnbalanced = {"K_ZLookupLStrCache(52, 0, 0)",
                           R"(Kp_ReportErrString(0x70028, 8, "unbalanced unlock."))"};

}  // namespace

TEST_F(SurfaceLock, TheFirstLocksThePixelsAndReadsAddressAndStride) {
  void* pixels = SurfacePixels(worldH_);
  Record(worldH_).pixels.rowBytes = 1;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "LockPixels(map of gworld1)",
                                 "GetPixBaseAddr(map of gworld1)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)),
              ElementsAre("lockCount", "baseAddr", "rowBytes"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, pixels);
  EXPECT_EQ(Record(worldH_).pixels.rowBytes, 48);
}

TEST_F(SurfaceLock, StoresIntoARecordThatMovedDuringTheCalls) {
  void* pixels = SurfacePixels(worldH_);
  Record(worldH_).pixels.rowBytes = 1;
  MoveInEveryCall();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, pixels);
  EXPECT_EQ(Record(worldH_).pixels.rowBytes, 48);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(SurfaceLock, TakesTheStrideWithoutTheTwoFlagsInItsWord) {
  recorder_.script.surfaceRowBytes = 0x4000 | 0x1234;
  PXL_WorldHandle worldH = Make(32, Sized(1, 1));
  Record(worldH).pixels.rowBytes = 0;
  PXL_LockPixels(0, worldH, nullptr);
  EXPECT_EQ(Record(worldH).pixels.rowBytes, 0x1234);
}

TEST_F(SurfaceLock, CountsBeforeItAsksForThePixels) {
  std::vector<std::int32_t> counts;
  recorder_.OnCall([&](const std::string&) { counts.push_back(Record(worldH_).pixels.lockCount); });
  PXL_LockPixels(0, worldH_, nullptr);
  EXPECT_THAT(counts, ElementsAre(1, 1, 1));
}

TEST_F(SurfaceLock, ANestedOneOnlyCounts) {
  PXL_LockPixels(0, worldH_, nullptr);
  ForgetLog();
  const PXL_World before = Record(worldH_);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 2);
  EXPECT_EQ(purged, 0);
}

TEST_F(SurfaceLock, IgnoresItsFirstArgument) {
  EXPECT_EQ(PXL_LockPixels(0xFFFFFFFF, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
}

TEST_F(SurfaceLock, OfPurgedPixelsTellsACallerThatAsksAndLocksNothing) {
  const PXL_World before = Record(worldH_);
  recorder_.Fail("LockPixels");
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NONE);
  EXPECT_EQ(purged, 1);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "LockPixels(map of gworld1)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(SurfaceLock, OfPurgedPixelsIsReportedWhenNobodyAsks) {
  const PXL_World before = Record(worldH_);
  recorder_.Fail("LockPixels");
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_PURGED);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "LockPixels(map of gworld1)",
                                 "K_ZLookupLStrCache(28, 0, 0)",
                                 R"(Kp_ReportErrString(0x70033, 8, "pixel buffer purged!"))"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(SurfaceLock, OfPurgedPixelsTakesTheCountBackInARecordThatMoved) {
  recorder_.Fail("LockPixels");
  MoveInEveryCall();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_PURGED);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(SurfaceLock, OfPixelsThatAreThereClearsTheCallersByteAlone) {
  std::uint8_t bytes[3] = {7, 7, 7};
  PXL_LockPixels(0, worldH_, &bytes[1]);
  EXPECT_THAT(bytes, ElementsAre(7, 0, 7));
}

TEST_F(SurfaceLock, OfPurgedPixelsSetsTheCallersByteAlone) {
  std::uint8_t bytes[3] = {7, 7, 7};
  recorder_.Fail("LockPixels");
  PXL_LockPixels(0, worldH_, &bytes[1]);
  EXPECT_THAT(bytes, ElementsAre(7, 1, 7));
}

TEST_F(SurfaceLock, TheLastUnlockUnlocksThePixelsAndClearsTheAddress) {
  PXL_LockPixels(0, worldH_, nullptr);
  const PXL_World before = Record(worldH_);
  std::vector<bool> addressed;
  recorder_.OnCall(
      [&](const std::string&) { addressed.push_back(Record(worldH_).pixels.baseAddr != nullptr); });
  ForgetLog();
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "UnlockPixels(map of gworld1)"));
  EXPECT_THAT(addressed, ElementsAre(true, true));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount", "baseAddr"));
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(SurfaceLock, TwoLocksAndTwoUnlocksTouchThePixelsOnceEach) {
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_NE(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_EQ(recorder_.Count("UnlockPixels"), 0);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_EQ(recorder_.Count("LockPixels"), 1);
  EXPECT_EQ(recorder_.Count("UnlockPixels"), 1);
}

TEST_F(SurfaceLock, AnUnlockTooManyIsReportedAndLeavesTheCountNegative) {
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAreArray(kUnbalanced));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, -1);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAreArray(Together({kUnbalanced, kUnbalanced})));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, -2);
}

TEST_F(SurfaceLock, AfterAnUnlockTooManyOnlyMakesUpForIt) {
  PXL_UnlockPixels(worldH_);
  ForgetLog();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("LockPixels"), 1);
  EXPECT_NE(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(SurfaceLock, ComesBeforeProviderAndFrame) {
  char frame = 0;
  ScriptedProvider provider(worldH_);
  Record(worldH_).pixels.frame = &frame;
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "LockPixels(map of gworld1)",
                                 "GetPixBaseAddr(map of gworld1)", "GetPortPixMap(gworld1)",
                                 "UnlockPixels(map of gworld1)"));
}

TEST_F(SurfaceLock, IsChosenByTheFlagWhateverItsValue) {
  Record(worldH_).hasGWorld = 0x80;
  PXL_LockPixels(0, worldH_, nullptr);
  EXPECT_EQ(recorder_.Count("LockPixels"), 1);
}

TEST_F(SurfaceLock, IsNotChosenByTheSurfaceAlone) {
  Record(worldH_).hasGWorld = 0;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(FrameLock, TheFirstSetsTheAddressOfTheFirstPixel) {
  const PXL_World before = Record(worldH_);
  ASSERT_EQ(before.pixels.alignOffset, 11U);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NONE);
  EXPECT_EQ(purged, 0);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount", "baseAddr"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, static_cast<char*>(before.pixels.frame) + 11);
}

TEST_F(FrameLock, ANestedOneOnlyCounts) {
  PXL_LockPixels(0, worldH_, nullptr);
  Record(worldH_).pixels.alignOffset = 3;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 2);
}

TEST_F(FrameLock, OnlyTheLastUnlockClearsTheAddress) {
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_NE(Record(worldH_).pixels.baseAddr, nullptr);
  const PXL_World before = Record(worldH_);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount", "baseAddr"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(FrameLock, AnUnlockTooManyIsReportedAndLeavesTheCountNegative) {
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAreArray(kUnbalanced));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, -1);
}

TEST_F(FrameLock, AfterAnUnlockTooManyOnlyMakesUpForIt) {
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_NE(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(FrameLock, DoesNotNeedTheFrameFlag) {
  Record(worldH_).hasFrame = 0;
  PXL_LockPixels(0, worldH_, nullptr);
  EXPECT_NE(Record(worldH_).pixels.baseAddr, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(ProviderLock, TheFirstMapsThePixelsAndSetsNoAddress) {
  const PXL_World before = Record(worldH_);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NONE);
  EXPECT_EQ(purged, 0);
  EXPECT_THAT(Log(), ElementsAre("mapPixels(the World's frame)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount", "frame"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
  EXPECT_EQ(Record(worldH_).pixels.frame, provider_.Pixels());
}

TEST_F(ProviderLock, ComesBeforeAFrameThatIsThereAlready) {
  Record(worldH_).pixels.frame = provider_.Pixels();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("mapPixels(the World's frame)"));
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(ProviderLock, GivesTheProvidersOwnErrorAndStaysCounted) {
  provider_.mapStatus = -4321;
  const PXL_World before = Record(worldH_);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), -4321);
  EXPECT_EQ(purged, 0);
  EXPECT_THAT(Log(), ElementsAre("mapPixels(the World's frame)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
}

TEST_F(ProviderLock, GivesTheProvidersErrorAlsoWhenNobodyAsksForPurging) {
  provider_.mapStatus = 91;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), 91);
  EXPECT_THAT(Log(), ElementsAre("mapPixels(the World's frame)"));
}

TEST_F(ProviderLock, ANestedOneOnlyCounts) {
  PXL_LockPixels(0, worldH_, nullptr);
  ForgetLog();
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("lockCount"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 2);
}

TEST_F(ProviderLock, ANestedOneWithoutFrameCountsAndLacksMemory) {
  provider_.mapStatus = 91;
  PXL_LockPixels(0, worldH_, nullptr);
  ForgetLog();
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NO_MEMORY);
  EXPECT_EQ(purged, 0);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 2);
}

TEST_F(ProviderLock, OnANegativeCountMapsNothing) {
  Record(worldH_).pixels.lockCount = -1;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(ProviderLock, TheLastUnlockClearsTheAddressBeforeItUnmaps) {
  PXL_LockPixels(0, worldH_, nullptr);
  PXL_LockPixels(0, worldH_, nullptr);
  Record(worldH_).pixels.baseAddr = provider_.Pixels();
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, provider_.Pixels());
  ForgetLog();
  std::vector<void*> addresses;
  recorder_.OnCall([&](const std::string&) {
    EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
    addresses.push_back(Record(worldH_).pixels.baseAddr);
  });
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("unmapPixels(the World's frame)"));
  EXPECT_THAT(addresses, ElementsAre(nullptr));
  EXPECT_EQ(Record(worldH_).pixels.frame, nullptr);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(ProviderLock, SaysNothingOfAnUnmappingThatFails) {
  PXL_LockPixels(0, worldH_, nullptr);
  ForgetLog();
  provider_.unmapStatus = 91;
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("unmapPixels(the World's frame)"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
}

TEST_F(ProviderLock, WhoseMappingFailedIsNeverUnlocked) {
  provider_.mapStatus = 91;
  PXL_LockPixels(0, worldH_, nullptr);
  ForgetLog();
  const PXL_World before = Record(worldH_);
  PXL_UnlockPixels(worldH_);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 1);
}

TEST_F(ProviderLock, WhoseMappingFailedButLeftAFrameIsUnlockedAndUnmapped) {
  provider_.mapStatus = 4;
  provider_.mapsAnyway = true;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(worldH_).pixels.frame, provider_.Pixels());
  ForgetLog();
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("unmapPixels(the World's frame)"));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
}

TEST_F(ProviderLock, AnUnlockTooManyOfMappedPixelsIsReportedAndUnmapsNothing) {
  Record(worldH_).pixels.frame = provider_.Pixels();
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAreArray(kUnbalanced));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, -1);
}

TEST_F(Locking, MapsAFileAtTheFirstLockAndUnmapsItAtTheLastUnlock) {
  PXL_WorldHandle worldH = NewWorld(64, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(Record(worldH).pixels.frame), "view");
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  PXL_UnlockPixels(worldH);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(Record(worldH).pixels.frame, nullptr);
  EXPECT_THAT(recorder_.LogOf({"GetAddress", "UnmapMemory"}),
              ElementsAre("GetAddress()", "UnmapMemory()"));
  PXL_DisposeWorld(worldH);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(LockWithoutPixels, DoesNothing) {
  const PXL_World before = Record(worldH_);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH_, &purged), PXL_Err_NONE);
  EXPECT_EQ(purged, 0);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(LockWithoutPixels, IsNothingToUnlock) {
  const PXL_World before = Record(worldH_);
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(LockWithoutPixels, ReportsACountThatIsNegativeAtEveryUnlock) {
  Record(worldH_).pixels.lockCount = -1;
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAreArray(kUnbalanced));
  EXPECT_EQ(Record(worldH_).pixels.lockCount, -1);
}

TEST_F(LockOfADamagedWorld, IsRefusedWithoutAWordAboutPurging) {
  PXL_WorldHandle worldH = NewWorld(32);
  Record(worldH).tailMark = 0;
  const PXL_World before = Record(worldH);
  std::uint8_t purged = 9;
  EXPECT_EQ(PXL_LockPixels(0, worldH, &purged), PXL_Err_INVALID);
  EXPECT_EQ(purged, 9);
  EXPECT_THAT(Log(), ElementsAreArray(DamagedWorldReport("0x70033")));
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(LockOfADamagedWorld, GivesWhatTheReportMakesOfIt) {
  PXL_WorldHandle worldH = NewWorld(32);
  Record(worldH).headMark = 0;
  recorder_.script.quexErrString = [](std::int32_t) { return 55; };
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), 55);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
}

TEST_F(LockOfADamagedWorld, GoesOnWhenTheReportSaysSo) {
  PXL_WorldHandle worldH = NewWorld(32);
  Record(worldH).headMark = 0;
  recorder_.script.quexErrString = [](std::int32_t) { return 0; };
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 1);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
}

TEST_F(LockOfADamagedWorld, IsNotTakenBack) {
  for (const std::int32_t depth : {32, 64}) {
    PXL_WorldHandle worldH = NewWorld(depth);
    Record(worldH).headMark = 0;
    const PXL_World before = Record(worldH);
    PXL_UnlockPixels(worldH);
    EXPECT_THAT(Log(), ElementsAreArray(DamagedWorldReport("0x70028")));
    EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
  }
}
