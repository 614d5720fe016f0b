// Reloading of purged pixels.
#include "state/reload.h"

#include "tests/contract/state/expected_reports.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

class ReloadOfASurface : public BornModule {
 protected:
  PXL_WorldHandle worldH_ = NewWorld(32, {10, 20, 14, 30});
  std::uint8_t loaded_ = 9;
};

class ReloadOfAFrame : public BornModule {
 protected:
  ReloadOfAFrame() {
    recorder_.script.purgeRounds = 0;
    // Values that no computation yields, so that a change shows.
    Record(worldH_).pixels.frameSize = 1000;
    Record(worldH_).pixels.rowBytes = 77;
    Record(worldH_).pixels.alignOffset = 3;
  }
  [[nodiscard]] std::string Frame() { return recorder_.NameOf(Record(worldH_).pixels.frame); }
  void SetBounds(const Rect& bounds) { Record(worldH_).bounds = bounds; }

  PXL_WorldHandle worldH_ = NewWorld(64, {10, 20, 14, 30});
  std::uint8_t loaded_ = 9;
};

const Calls kUpdate = {"QDE_ForceBitmapCreationBitfields(1, 0, 0)",
                       "UpdateGWorld(gworld1, 32, {0, 0, 4, 10}, null, 0, 0)",
                       "QDE_ForceBitmapCreationBitfields(0, 0, 0)"};
const Calls kStrangeChange = {
    "K_ZLookupLStrCache(31, 0, 0)",
    R"(Kp_ReportErrString(0x70034, 8, "strange change in pixel buffer."))"};
// The rows of 10 pixels of 8 bytes, four of them, and the spare 20 bytes.
const Calls kAllocation = {"K_PurgeLoop(340, 1)", "malloc(340)"};

}  // namespace

TEST_F(ReloadOfASurface, UpdatesItInPlaceAndWritesNoField) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_THAT(Log(), ElementsAreArray(kUpdate));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ReloadOfASurface, NeedsNoFlag) {
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), PXL_Err_NONE);
}

TEST_F(ReloadOfASurface, PassesTheDepthOfTheRecord) {
  Record(worldH_).depth = 8;
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"UpdateGWorld"}),
              ElementsAre("UpdateGWorld(gworld1, 8, {0, 0, 4, 10}, null, 0, 0)"));
}

TEST_F(ReloadOfASurface, IsRefusedWhileItIsLocked) {
  for (const std::int32_t count : {1, -1}) {
    Record(worldH_).pixels.lockCount = count;
    const PXL_World before = Record(worldH_);
    ForgetLog();
    EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_REFUSED);
    EXPECT_EQ(loaded_, 9);
    EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(30, 0, 0)",
                                   R"(Kp_ReportErrString(0x70034, 8, )"
                                   R"("a locked pixel buffer can#{rsquo}t be reallocated."))"));
    EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
  }
}

TEST_F(ReloadOfASurface, ThatHasMovedIsReportedTwiceAndKeepsTheOldOne) {
  recorder_.script.updateReplacesSurface = true;
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_FAILED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_THAT(Log(),
              ElementsAreArray(Together({kUpdate, kStrangeChange, BufferReport("0x70034", 1)})));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ReloadOfASurface, ThatHasMovedComesBeforeTheErrorOfTheUpdate) {
  recorder_.script.updateReplacesSurface = true;
  recorder_.script.updateGWorldError = kLayerMemoryFull;
  recorder_.FailAlways("UpdateGWorld");
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_FAILED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_THAT(Log(),
              ElementsAreArray(Together({kUpdate,
                                         {"GetPortPixMap(gworld2)", "K_PurgeHandlesAndCompact()"},
                                         kStrangeChange,
                                         BufferReport("0x70034", 1)})));
  EXPECT_EQ(recorder_.NameOf(Record(worldH_).gworld), "gworld1");
}

TEST_F(ReloadOfASurface, ComparesWithARecordThatMovedDuringTheUpdate) {
  MoveInEveryCall();
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("Kp_ReportErrString"), 0);
}

TEST_F(ReloadOfASurface, ReportsTheDepthOfARecordThatMoved) {
  MoveInEveryCall();
  recorder_.script.updateGWorldError = kLayerMemoryFull;
  recorder_.FailAlways("UpdateGWorld");
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), kLayerMemoryFull);
  const Calls report = ShortageReport("0x70034", 10, 4, 8);
  EXPECT_EQ(Log().back(), report.back());
}

TEST_F(ReloadOfASurface, TakesNoNoticeOfTheFlagsOfAnUpdate) {
  recorder_.script.updateGWorldFlags = 0x7FFFFFFF;
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
}

TEST_F(ReloadOfAFrame, FreesTheOldOneFirstAndKeepsTheGeometryAsStored) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_THAT(Log(), ElementsAreArray(Together({{"free(heap1)"}, kAllocation})));
  EXPECT_EQ(Frame(), "heap2");
  // The new block may lie where the old one was.
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), Each("frame"));
}

TEST_F(ReloadOfAFrame, HasNoneWhileItAsksForTheNewOne) {
  std::vector<void*> frames;
  recorder_.OnCall([&](const std::string& name) {
    if (name == "K_PurgeLoop") frames.push_back(Record(worldH_).pixels.frame);
  });
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_THAT(frames, ElementsAre(nullptr));
}

TEST_F(ReloadOfAFrame, FreesByTheStoredSize) {
  Record(worldH_).pixels.frameSize = 300 * 1024 + 1;
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(Log()[0], "K_FreeRecycledPtr(heap1)");
}

TEST_F(ReloadOfAFrame, GetsOneWhereNoneWas) {
  PXL_WorldHandle worldH = NewWorld(64, {10, 20, 14, 30}, PXL_Flag_DEFERRED);
  EXPECT_EQ(PXLp_ReloadPixels(worldH, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 1);
  EXPECT_THAT(Log(), ElementsAreArray(kAllocation));
  EXPECT_NE(Record(worldH).pixels.frame, nullptr);
}

TEST_F(ReloadOfAFrame, NeedsNoFlag) {
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap2");
}

TEST_F(ReloadOfAFrame, ComputesItsSizeFromTheBounds) {
  SetBounds({0, 0, 6, 2});
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"malloc"}), ElementsAre("malloc(116)"));
}

TEST_F(ReloadOfAFrame, IsQuietWhenMemoryIsShortAndTheCallerAsks) {
  recorder_.FailAlways("malloc");
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 0);
  EXPECT_THAT(Log(), ElementsAreArray(Together({{"free(heap1)"}, kAllocation})));
  EXPECT_EQ(Frame(), "null");
}

TEST_F(ReloadOfAFrame, ReportsThatMemoryIsShortWhenNobodyAsks) {
  recorder_.FailAlways("malloc");
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAreArray(Together(
                         {{"free(heap1)"}, kAllocation, ShortageReport("0x70034", 10, 4, 16)})));
  EXPECT_EQ(Frame(), "null");
}

TEST_F(ReloadOfAFrame, KeepsABlockThatComesWithAnError) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    attempt(context, &done);
    return 55;
  };
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), 55);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_THAT(Log(), ElementsAreArray(
                         Together({{"free(heap1)"}, kAllocation, BufferReport("0x70034", 55)})));
}

TEST_F(ReloadOfAFrame, WhoseRowsAreTooLongIsReportedTwice) {
  SetBounds({0, 0, 4, 32767});
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_REFUSED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_THAT(Log(), ElementsAreArray(Together(
                         {{"free(heap1)", "K_ZLookupLStrCache(29, 0, 0)",
                           R"(Kp_ReportError(0x70035, 8 error 0 "row size too large (262144)."))"},
                          BufferReport("0x70034", 3)})));
  EXPECT_EQ(Frame(), "null");
}

TEST_F(ReloadOfAFrame, ThatIsTooLargeIsReportedTwiceTheSecondTimeByItsRows) {
  // With the spare bytes of its rows this image exceeds the limit, without
  // them it does not.
  Record(worldH_).depth = 32;
  SetBounds({-32755, 0, 32755, 8193});
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAreArray(Together({{"free(heap1)"},
                                                LimitReport("0x70035", 8193, 65510, 8, "2.0"),
                                                LimitReport("0x70034", 8193, 65510, 8, "2.0")})));
}

TEST_F(ReloadOfAFrame, OfNoWidthAndNegativeHeightIsReportedAsAShortageTwice) {
  // The geometry rule leaves the bytes of a row unwritten here: the size of the
  // second report is that of the rectangle, 0.
  Record(worldH_).depth = 32;
  SetBounds({5, 0, 0, 0});
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
              ElementsAre(StartsWith("K_ReportError(0x70035, 8, u\"Unable to allocate enough"),
                          StartsWith("K_ReportError(0x70034, 8, u\"Unable to allocate enough")));
}

TEST_F(ReloadOfAFrame, ThatIsTooLargeIsReportedOnceToACallerThatAsks) {
  Record(worldH_).depth = 32;
  SetBounds({-32755, 0, 32755, 8193});
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(loaded_, 0);
  EXPECT_EQ(recorder_.Count("K_ReportError"), 1);
}

TEST_F(ReloadOfAFrame, IsRefusedWhileItIsLocked) {
  Record(worldH_).pixels.lockCount = 1;
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_REFUSED);
  EXPECT_EQ(loaded_, 9);
  EXPECT_EQ(Frame(), "heap1");
  EXPECT_EQ(recorder_.Count("free"), 0);
}

TEST_F(ReloadOfAFrame, StoresIntoARecordThatMovesInEveryCall) {
  MoveInEveryCall();
  EXPECT_EQ(PXLp_ReloadPixels(worldH_, &loaded_), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap2");
}
