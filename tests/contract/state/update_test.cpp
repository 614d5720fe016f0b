// PXL_UpdateWorld.
#include <type_traits>

#include "tests/contract/state/expected_reports.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

static_assert(std::is_same_v<decltype(&PXL_UpdateWorld),
                             std::int32_t (*)(std::int32_t, const Rect*, std::int32_t, void*,
                                              PXL_WorldHandle)>);

class Update : public BornModule {
 protected:
  std::int32_t UpdateTo(PXL_WorldHandle worldH, std::int32_t depth, const Rect* bounds) {
    return PXL_UpdateWorld(depth, bounds, 0, nullptr, worldH);
  }
  // The messages about purging belong to no call of the module.
  void TearDown() override {
    for (const char* entry : {"58", "59", "60", "61"}) {
      EXPECT_THAT(Log(),
                  Not(::testing::Contains(StartsWith(std::string("K_ZLookupLStrCache(") + entry))));
    }
  }
};

class UpdateOfASurface : public Update {
 protected:
  void FailWith(std::int32_t error) {
    recorder_.FailAlways("UpdateGWorld");
    recorder_.script.updateGWorldError = error;
  }
  PXL_WorldHandle worldH_ = NewWorld(32, {10, 20, 14, 30});
  Rect bounds_ = {5, -6, 25, 24};
};

class UpdateOfAFrame : public Update {
 protected:
  PXL_WorldHandle worldH_ = NewWorld(64, {10, 20, 14, 30});
};

class UpdateOfALockedWorld : public Update {};
class UpdateOfADamagedWorld : public Update {};

Calls Updating(const std::string& arguments) {
  return {"TickCount()", "QDE_ForceBitmapCreationBitfields(1, 0, 0)",
          "UpdateGWorld(" + arguments + ")", "QDE_ForceBitmapCreationBitfields(0, 0, 0)"};
}

const Calls kLockedReport = {
    "K_ZLookupLStrCache(37, 0, 0)",
    R"(Kp_ReportErrString(0x7001A, 8, "can#{rsquo}t refresh a locked pixel buffer."))"};

}  // namespace

TEST_F(UpdateOfASurface, ThatFailsForMemoryComputesItsSizeWithoutPadding) {
  FailWith(kLayerMemoryFull);
  const Rect largest = {-32768, -32768, 32767, 32767};
  EXPECT_EQ(PXL_UpdateWorld(8, &largest, 0, nullptr, worldH_), kLayerMemoryFull);
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
              ElementsAre(HasSubstr("size 65535 x 65535 @ 2 bpc (4.0 GB)")));
}

TEST_F(UpdateOfASurface, UpdatesItAndMovesTheBoundsToTheOrigin) {
  recorder_.script.surfaceDepth = 8;
  recorder_.script.surfaceRowBytes = 0x4000 | 0x123;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 32, &bounds_), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAreArray(Together(
                         {Updating("gworld1, 32, {5, -6, 25, 24}, null, 0, 0"),
                          {"GetGWorldDevice(gworld1)", "MacOffsetRect({5, -6, 25, 24}, 6, -5)",
                           "GetPortPixMap(gworld1)"}})));
  const PXL_World& world = Record(worldH_);
  EXPECT_THAT(ChangedFields(before, world),
              ElementsAre("width", "height", "bounds", "depth", "rowBytes"));
  EXPECT_EQ(world.bounds, (Rect{0, 0, 20, 30}));
  EXPECT_EQ(world.width, 30);
  EXPECT_EQ(world.height, 20);
  EXPECT_EQ(world.depth, 8);
  EXPECT_EQ(world.pixels.rowBytes, 0x123);
  EXPECT_EQ(bounds_, (Rect{5, -6, 25, 24}));
}

TEST_F(UpdateOfASurface, TakesOverASurfaceThatReplacedTheOther) {
  recorder_.script.updateReplacesSurface = true;
  EXPECT_EQ(UpdateTo(worldH_, 32, &bounds_), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(Record(worldH_).gworld), "gworld2");
  EXPECT_EQ(recorder_.NameOf(Record(worldH_).gdevice), "device of gworld2");
  EXPECT_THAT(recorder_.LogOf({"GetGWorldDevice", "GetPortPixMap"}),
              ElementsAre("GetGWorldDevice(gworld2)", "GetPortPixMap(gworld2)"));
}

TEST_F(UpdateOfASurface, StoresIntoARecordThatMovesInEveryCall) {
  MoveInEveryCall();
  EXPECT_EQ(UpdateTo(worldH_, 0, &bounds_), PXL_Err_NONE);
  const PXL_World& world = Record(worldH_);
  EXPECT_EQ(world.bounds, (Rect{0, 0, 20, 30}));
  EXPECT_EQ(world.width, 30);
  EXPECT_EQ(world.height, 20);
  EXPECT_EQ(world.pixels.rowBytes, 128);
  EXPECT_EQ(recorder_.NameOf(world.gdevice), "device of gworld1");
}

TEST_F(UpdateOfASurface, KeepsSizeAndDepthWhenNoneAreGiven) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 0, nullptr), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld", "MacOffsetRect"}),
              ElementsAre("UpdateGWorld(gworld1, 32, {0, 0, 4, 10}, null, 0, 0)",
                          "MacOffsetRect({0, 0, 4, 10}, 0, 0)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), ElementsAre("bounds"));
  EXPECT_EQ(Record(worldH_).bounds, Sized(10, 4));
}

TEST_F(UpdateOfASurface, ReadsTheKeptDepthAsASignedNumber) {
  Record(worldH_).depth = -32;
  recorder_.script.surfaceDepth = 32;
  EXPECT_EQ(UpdateTo(worldH_, 0, nullptr), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld"}),
              ElementsAre("UpdateGWorld(gworld1, -32, {0, 0, 4, 10}, null, 0, 0)"));
}

TEST_F(UpdateOfASurface, HandsANegativeDepthOn) {
  FailWith(kLayerError);
  UpdateTo(worldH_, -8, nullptr);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld"}),
              ElementsAre("UpdateGWorld(gworld1, -8, {0, 0, 4, 10}, null, 0, 0)"));
}

TEST_F(UpdateOfASurface, HandsTheSurfaceArgumentOnWithItsSign) {
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, -2, &bounds_, worldH_), PXL_Err_NONE);
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, 0x7FFFFFFF, nullptr, worldH_), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld"}),
              ElementsAre("UpdateGWorld(gworld1, 32, {0, 0, 4, 10}, null, -2, 0)",
                          "UpdateGWorld(gworld1, 32, {0, 0, 4, 10}, null, 2147483647, 0)"));
}

TEST_F(UpdateOfASurface, MovesTheFarthestCornerByWrapping) {
  const Rect far = {-32768, -32768, -32760, -32758};
  EXPECT_EQ(UpdateTo(worldH_, 0, &far), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"MacOffsetRect"}),
              ElementsAre("MacOffsetRect({-32768, -32768, -32760, -32758}, -32768, -32768)"));
  EXPECT_EQ(Record(worldH_).bounds, Sized(10, 8));
}

TEST_F(UpdateOfASurface, ThatFailsIsReportedAndChangesNothing) {
  FailWith(kLayerError);
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 8, &bounds_), kLayerError);
  EXPECT_THAT(Log(), ElementsAreArray(Together({Updating("gworld1, 8, {5, -6, 25, 24}, null, 0, 0"),
                                                {"GetPortPixMap(gworld1)"},
                                                BufferReport("0x7001A", kLayerError)})));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(UpdateOfASurface, ThatRunsOutOfMemorySaysSo) {
  FailWith(kLayerMemoryFull);
  recorder_.script.updateLosesPixels = true;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 8, &bounds_), kLayerMemoryFull);
  EXPECT_THAT(Log(), ElementsAreArray(Together({Updating("gworld1, 8, {5, -6, 25, 24}, null, 0, 0"),
                                                {"GetPortPixMap(gworld1)", "NewEmptyHandle()",
                                                 "K_PurgeHandlesAndCompact()"},
                                                ShortageReport("0x7001A", 30, 20, 2)})));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(UpdateOfASurface, ThatFailsKeepsTheOldOneThoughItWasReplaced) {
  FailWith(kLayerError);
  recorder_.script.updateReplacesSurface = true;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 0, &bounds_), kLayerError);
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(UpdateOfASurface, SavesNeitherPortNorDevice) {
  UpdateTo(worldH_, 0, &bounds_);
  EXPECT_THAT(recorder_.LogOf({"GetPort", "MacSetPort", "GetGDevice", "SetGDevice"}), IsEmpty());
}

TEST_F(UpdateOfASurface, LeavesItUnlocked) {
  EXPECT_EQ(UpdateTo(worldH_, 0, &bounds_), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH_).pixels.baseAddr, nullptr);
  EXPECT_EQ(recorder_.Count("LockPixels"), 0);
}

TEST_F(UpdateOfASurface, LosesNoMemory) {
  UpdateTo(worldH_, 0, &bounds_);
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(UpdateOfAFrame, ReadsTheTicksAndResizesIt) {
  const Rect bounds = {1, 2, 7, 4};
  EXPECT_EQ(UpdateTo(worldH_, 0, &bounds), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("TickCount()", "free(heap1)", "K_PurgeLoop(116, 1)", "malloc(116)",
                                 "MacOffsetRect({1, 2, 7, 4}, -2, -1)"));
  EXPECT_EQ(Record(worldH_).bounds, Sized(2, 6));
}

TEST_F(UpdateOfAFrame, WithoutSizeAndDepthChangesNothing) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(UpdateTo(worldH_, 0, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("TickCount()"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(UpdateOfAFrame, TakesTheKeptSizeFromWidthAndHeight) {
  Record(worldH_).bounds = {0, 0, 99, 99};
  EXPECT_EQ(UpdateTo(worldH_, 0, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("TickCount()"));
}

TEST_F(UpdateOfAFrame, RefusesANegativeDepth) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4), PXL_Flag_NO_PLATFORM);
  EXPECT_EQ(UpdateTo(worldH, -32, nullptr), PXL_Err_REFUSED);
  EXPECT_THAT(Log(),
              ElementsAre("TickCount()", "K_ZLookupLStrCache(24, 0, 0)",
                          R"(Kp_ReportErrString(0x70036, 8, "can#{rsquo}t change world depth."))"));
}

TEST_F(UpdateOfAFrame, AcceptsItsOwnDepth) {
  EXPECT_EQ(UpdateTo(worldH_, 64, nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("TickCount()"));
}

TEST_F(UpdateOfAFrame, IsChosenByTheSurfaceFlagAlone) {
  Record(worldH_).hasFrame = 0;
  const Rect bounds = Sized(2, 6);
  EXPECT_EQ(UpdateTo(worldH_, 0, &bounds), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).width, 2);
}

TEST_F(UpdateOfALockedWorld, IsRefusedAfterReadingTheTicks) {
  for (const std::int32_t depth : {32, 64}) {
    for (const std::int32_t count : {1, 2, -1}) {
      PXL_WorldHandle worldH = NewWorld(depth, Sized(10, 4));
      Record(worldH).pixels.lockCount = count;
      const PXL_World before = Record(worldH);
      const Rect bounds = Sized(2, 6);
      EXPECT_EQ(UpdateTo(worldH, 0, &bounds), PXL_Err_REFUSED);
      EXPECT_THAT(Log(), ElementsAreArray(Together({kLockedReport, {"TickCount()"}})));
      EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
    }
  }
}

TEST_F(UpdateOfALockedWorld, IsRefusedAfterAnUnlockTooMany) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(UpdateTo(worldH, 0, nullptr), PXL_Err_REFUSED);
}

TEST_F(UpdateOfADamagedWorld, IsRefusedAfterReadingTheTicks) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  Record(worldH).tailMark = 1;
  const PXL_World before = Record(worldH);
  const Rect bounds = Sized(2, 6);
  EXPECT_EQ(UpdateTo(worldH, 0, &bounds), PXL_Err_INVALID);
  EXPECT_THAT(Log(), ElementsAreArray(Together({DamagedWorldReport("0x7001A"), {"TickCount()"}})));
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(UpdateOfADamagedWorld, IsNotReportedAsLockedToo) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  Record(worldH).headMark = 0;
  Record(worldH).pixels.lockCount = 1;
  EXPECT_EQ(UpdateTo(worldH, 0, nullptr), PXL_Err_INVALID);
  EXPECT_THAT(Log(), ElementsAreArray(Together({DamagedWorldReport("0x7001A"), {"TickCount()"}})));
}

TEST_F(UpdateOfADamagedWorld, GivesWhatTheReportMakesOfIt) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  Record(worldH).headMark = 0;
  recorder_.script.quexErrString = [](std::int32_t) { return 55; };
  EXPECT_EQ(UpdateTo(worldH, 0, nullptr), 55);
}

TEST_F(UpdateOfADamagedWorld, GoesOnToTheLockWhenTheReportSaysSo) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  Record(worldH).headMark = 0;
  Record(worldH).pixels.lockCount = 1;
  recorder_.script.quexErrString = [](std::int32_t) { return 0; };
  EXPECT_EQ(UpdateTo(worldH, 0, nullptr), PXL_Err_REFUSED);
  EXPECT_THAT(
      Log(),
      ElementsAreArray(Together({DamagedWorldReport("0x7001A"), kLockedReport, {"TickCount()"}})));
}
