// Re-sizing of a frame.
#include "state/resize_frame.h"

#include "tests/contract/state/expected_reports.h"
#include "tests/contract/state/scripted_provider.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

class ResizedFrame : public BornModule {
 protected:
  ResizedFrame() { recorder_.script.purgeRounds = 0; }

  std::int32_t Resize(const Rect& rect, std::int32_t depth = 64) {
    return PXLp_ResizeFrame(rect, depth, worldH_);
  }
  [[nodiscard]] std::string Frame() { return recorder_.NameOf(Record(worldH_).pixels.frame); }
  // After an error all fields but the block and its size are unchanged.
  void ExpectOldGeometry(const PXL_World& before) {
    EXPECT_THAT(ChangedFields(before, Record(worldH_)), Each(AnyOf("frame", "frameSize", "flags")));
  }
  // The purge loop returns this code after the first `attempts` attempts, even if
  // they allocated a block; later loops work.
  void PurgeLoopGives(std::int32_t code, int attempts = 1) {
    recorder_.script.purgeLoop = [code, attempts, this](std::uint64_t, K_PurgeAttempt attempt,
                                                        void* context) {
      std::uint8_t done = 0;
      attempt(context, &done);
      return ++loops_ <= attempts ? code : 0;
    };
  }

  PXL_WorldHandle worldH_ = NewWorld(64, {10, 20, 14, 30});
  int loops_ = 0;
};

// Rows of 10 pixels of 8 bytes, four of them, and the spare 20 bytes.
constexpr std::uint64_t kOldSize = 340;
// The frame that the tests ask for: six rows of two pixels.
constexpr Rect kNew = {1, 2, 7, 4};
constexpr std::uint64_t kNewSize = 116;

const Calls kOldRequest = {"K_PurgeLoop(340, 1)", "malloc(340)"};
const Calls kNewRequest = {"K_PurgeLoop(116, 1)", "malloc(116)"};
const Calls kBeeps = {"K_Beep()", "K_Beep()"};
const Calls kDepthReport = {
    "K_ZLookupLStrCache(24, 0, 0)",
    R"(Kp_ReportErrString(0x70036, 8, "can#{rsquo}t change world depth."))"};

}  // namespace

TEST_F(ResizedFrame, IsFreedBeforeTheNewOneIsRequested) {
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAreArray(Together(
                         {{"free(heap1)"}, kNewRequest, {"MacOffsetRect({1, 2, 7, 4}, -2, -1)"}})));
}

TEST_F(ResizedFrame, TakesOverTheNewGeometryFromTheOrigin) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  const PXL_World& world = Record(worldH_);
  EXPECT_THAT(ChangedFields(before, world),
              Each(AnyOf("width", "height", "bounds", "frame", "frameSize", "rowBytes")));
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_EQ(world.bounds, (Rect{0, 0, 6, 2}));
  EXPECT_EQ(world.width, 2);
  EXPECT_EQ(world.height, 6);
  EXPECT_EQ(world.depth, 64);
  EXPECT_EQ(world.pixels.frameSize, kNewSize);
  EXPECT_EQ(world.pixels.rowBytes, 16);
}

TEST_F(ResizedFrame, IsAlignedAnew) {
  recorder_.script.blockOffset = 6;
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.alignOffset, 10U);
}

TEST_F(ResizedFrame, HasNoBlockWhileTheNewOneIsRequested) {
  std::vector<void*> frames;
  recorder_.OnCall([&](const std::string& name) {
    if (name == "K_PurgeLoop") frames.push_back(Record(worldH_).pixels.frame);
  });
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  EXPECT_THAT(frames, ElementsAre(nullptr));
}

TEST_F(ResizedFrame, KeepsNoneOfItsPixels) {
  std::memset(Record(worldH_).pixels.frame, 0x11, kOldSize);
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  EXPECT_EQ(*static_cast<unsigned char*>(Record(worldH_).pixels.frame), 0xA5);
}

TEST_F(ResizedFrame, StoresIntoARecordThatMovesInEveryCall) {
  MoveInEveryCall();
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_EQ(Record(worldH_).pixels.frameSize, kNewSize);
  EXPECT_EQ(Record(worldH_).width, 2);
  EXPECT_EQ(Record(worldH_).pixels.rowBytes, 16);
}

TEST_F(ResizedFrame, OfTheSameSizeStaysWhereverItsOrigin) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize({0, 0, 4, 10}), PXL_Err_NONE);
  EXPECT_EQ(Resize({-100, 7, -96, 17}), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, OfAnotherWidthOrHeightAloneIsNew) {
  EXPECT_EQ(Resize(Sized(11, 4)), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_EQ(Resize(Sized(11, 5)), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap3");
}

TEST_F(ResizedFrame, OfWidthAndHeightExchangedIsNew) {
  EXPECT_EQ(Resize(Sized(4, 10)), PXL_Err_NONE);
  EXPECT_EQ(Frame(), "heap2");
}

TEST_F(ResizedFrame, NeverChangesItsDepth) {
  const PXL_World before = Record(worldH_);
  for (const std::int32_t depth : {32, 128, -64, 64 + 0x10000}) {
    ForgetLog();
    EXPECT_EQ(Resize(kNew, depth), PXL_Err_REFUSED);
    EXPECT_THAT(Log(), ElementsAreArray(kDepthReport));
  }
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, NeverChangesItsDepthThoughTheSizeStays) {
  EXPECT_EQ(Resize(Sized(10, 4), 128), PXL_Err_REFUSED);
  EXPECT_THAT(Log(), ElementsAreArray(kDepthReport));
}

TEST_F(ResizedFrame, ThatDoesNotExistStaysAsItIsAtAnyDepthAndSize) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4), PXL_Flag_DEFERRED);
  const PXL_World before = Record(worldH);
  const Rect tooLarge = Sized(32767, 4);
  EXPECT_EQ(PXLp_ResizeFrame(kNew, 128, worldH), PXL_Err_NONE);
  EXPECT_EQ(PXLp_ResizeFrame(tooLarge, 64, worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(ResizedFrame, OfAProviderStaysWhileItIsNotMapped) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4), PXL_Flag_DEFERRED);
  const ScriptedProvider provider(worldH);
  const PXL_World before = Record(worldH);
  EXPECT_EQ(PXL_UpdateWorld(0, &kNew, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(ResizedFrame, WithRowsTooLongIsRefusedByTheGeometryRule) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(Sized(32767, 4)), PXL_Err_REFUSED);
  EXPECT_THAT(Log(),
              ElementsAre("K_ZLookupLStrCache(29, 0, 0)",
                          R"(Kp_ReportError(0x70035, 8 error 0 "row size too large (262144)."))"));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, OfANegativeHeightIsRefusedByTheGeometryRule) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize({5, 0, 4, 10}), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAreArray(LimitReport("0x70035", 10, -1, 16, "-0.0")));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, ThatIsTooLargeIsRefusedByTheGeometryRule) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize({-16384, 0, 16383, 32766}), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAreArray(LimitReport("0x70035", 32766, 32767, 16, "8.0")));
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, FallsBackToTheOldSizeWhenTheNewOneCannotBeHad) {
  recorder_.Fail("malloc");
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(kNew), PXL_Err_NO_MEMORY);
  EXPECT_THAT(
      Log(),
      ElementsAreArray(Together(
          {{"free(heap1)"}, kNewRequest, ShortageReport("0x70036", 2, 6, 16), kOldRequest})));
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_EQ(Record(worldH_).pixels.frameSize, kNewSize);
  EXPECT_EQ(Record(worldH_).flags, before.flags);
  ExpectOldGeometry(before);
}

TEST_F(ResizedFrame, DoesNotAlignABlockOfTheOldSizeAnew) {
  Record(worldH_).pixels.alignOffset = 3;
  recorder_.script.blockOffset = 6;
  recorder_.Fail("malloc");
  EXPECT_EQ(Resize(kNew), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(worldH_).pixels.alignOffset, 3U);
}

TEST_F(ResizedFrame, FallsBackInARecordThatMovesInEveryCall) {
  recorder_.Fail("malloc");
  MoveInEveryCall();
  EXPECT_EQ(Resize(kNew), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_EQ(Record(worldH_).pixels.frameSize, kNewSize);
}

TEST_F(ResizedFrame, IsLostWithTwoBeepsWhenNeitherSizeCanBeHad) {
  recorder_.FailAlways("malloc");
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(kNew), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAreArray(Together({{"free(heap1)"},
                                                kNewRequest,
                                                ShortageReport("0x70036", 2, 6, 16),
                                                kOldRequest,
                                                kBeeps})));
  EXPECT_EQ(Frame(), "null");
  EXPECT_EQ(Record(worldH_).flags, before.flags | 0x20U);
  EXPECT_EQ(Record(worldH_).pixels.frameSize, kNewSize);
  ExpectOldGeometry(before);
}

TEST_F(ResizedFrame, IsMarkedLostInARecordThatMovesInEveryCall) {
  recorder_.FailAlways("malloc");
  MoveInEveryCall();
  EXPECT_EQ(Resize(kNew), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(worldH_).flags & 0x20U, 0x20U);
  EXPECT_EQ(Frame(), "null");
}

TEST_F(ResizedFrame, OnceLostCannotBeLockedAndNeverComesBack) {
  recorder_.FailAlways("malloc");
  Resize(kNew);
  ForgetLog();
  const PXL_World lost = Record(worldH_);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH_), nullptr);
  EXPECT_EQ(PXL_UpdateWorld(0, &kNew, 0, nullptr, worldH_), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("TickCount()"));
  EXPECT_THAT(ChangedFields(lost, Record(worldH_)), IsEmpty());
}

TEST_F(ResizedFrame, GivesTheErrorOfTheFirstRequestThoughTheSecondFailsToo) {
  recorder_.script.purgeLoop = [this](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    attempt(context, &done);
    return ++loops_ == 1 ? 55 : 66;
  };
  EXPECT_EQ(Resize(kNew), 55);
  EXPECT_EQ(recorder_.Count("K_Beep"), 2);
}

TEST_F(ResizedFrame, TakesACodeForAnErrorThoughABlockCameWithItAndLosesTheBlock) {
  PurgeLoopGives(55);
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(kNew), 55);
  EXPECT_THAT(Log(), ElementsAreArray(Together({{"free(heap1)"}, kNewRequest, kOldRequest})));
  EXPECT_EQ(Frame(), "heap3");
  EXPECT_EQ(Record(worldH_).pixels.frameSize, kNewSize);
  EXPECT_EQ(Record(worldH_).flags, before.flags);
  ExpectOldGeometry(before);
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.Outstanding(), ElementsAre("heap2"));
}

TEST_F(ResizedFrame, KeepsABlockOfTheOldSizeThatCameWithACodeAndCountsItAsLost) {
  PurgeLoopGives(55, 2);
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Resize(kNew), 55);
  EXPECT_THAT(Log(),
              ElementsAreArray(Together({{"free(heap1)"}, kNewRequest, kOldRequest, kBeeps})));
  EXPECT_EQ(Frame(), "heap3");
  EXPECT_EQ(Record(worldH_).flags, before.flags | 0x20U);
}

TEST_F(ResizedFrame, LosesNoMemoryWhenItWorks) {
  EXPECT_EQ(Resize(kNew), PXL_Err_NONE);
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(ResizedFrame, LosesNoMemoryWhenItFallsBack) {
  recorder_.Fail("malloc");
  Resize(kNew);
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(ResizedFrame, IsFreedByTheStoredSizeThoughItsBlockIsOfTheOtherKind) {
  recorder_.Fail("K_AllocateRecycledPtr");
  const Rect large = Sized(300, 200);
  EXPECT_EQ(Resize(large), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Frame(), "heap2");
  EXPECT_GT(Record(worldH_).pixels.frameSize, 300U * 1024);
  ForgetLog();
  PXL_DisposeWorld(worldH_);
  EXPECT_THAT(recorder_.LogOf({"K_FreeRecycledPtr", "free"}),
              ElementsAre("K_FreeRecycledPtr(heap2)"));
  EXPECT_THAT(recorder_.Outstanding(), ElementsAre("heap2"));
}

TEST_F(ResizedFrame, PassesTheStoredSizeToTheNextFreeAndTheNextFallBack) {
  recorder_.Fail("malloc");
  Resize(kNew);
  recorder_.Fail("malloc");
  ForgetLog();
  EXPECT_EQ(Resize(Sized(3, 3)), PXL_Err_NO_MEMORY);
  EXPECT_THAT(recorder_.LogOf({"free", "malloc"}),
              ElementsAre("free(heap2)", "malloc(116)", "malloc(116)"));
}

TEST_F(ResizedFrame, GeometryIsStoredAsGivenButFromTheOrigin) {
  Record(worldH_).pixels.alignOffset = 3;
  Record(worldH_).pixels.frame = reinterpret_cast<void*>(std::uintptr_t{0x1001});
  const PXL_World before = Record(worldH_);
  const Rect rect = {-5, 7, 15, 37};
  PXLp_SetWorldGeometry({rect, 128, 0x12345}, worldH_);
  EXPECT_THAT(Log(), ElementsAre("MacOffsetRect({-5, 7, 15, 37}, -7, 5)"));
  const PXL_World& world = Record(worldH_);
  EXPECT_THAT(ChangedFields(before, world),
              ElementsAre("width", "height", "bounds", "depth", "alignOffset", "rowBytes"));
  EXPECT_EQ(world.bounds, (Rect{0, 0, 20, 30}));
  EXPECT_EQ(world.width, 30);
  EXPECT_EQ(world.height, 20);
  EXPECT_EQ(world.depth, 128);
  EXPECT_EQ(world.pixels.rowBytes, 0x12345);
  EXPECT_EQ(world.pixels.alignOffset, 15U);
  EXPECT_EQ(rect, (Rect{-5, 7, 15, 37}));
}
