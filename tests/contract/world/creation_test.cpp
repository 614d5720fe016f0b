// What all ways of creation have in common: arguments, defaults, the handle.
#include <algorithm>
#include <stdexcept>

#include "memory/frame_settings.h"
#include "memory/frame_settings_reset.h"
#include "tests/support/module/contract.h"
#include "world/build.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// What stands in an output that a call has not written.
PXL_WorldHandle Untouched() {
  static PXL_World* master = nullptr;
  return &master;
}

bool IsZero(const void* bytes, std::size_t from, std::size_t to) {
  const auto* first = static_cast<const unsigned char*>(bytes);
  return std::all_of(first + from, first + to, [](unsigned char b) { return b == 0; });
}

}  // namespace

class Creation : public Contract {
 protected:
  Creation() {
    PXLp_LoadFrameSettings();
    BeBorn();
  }
  std::int32_t New(PXL_WorldHandle parentH, const Rect* rect, std::int32_t depth,
                   std::uint32_t flags = 0, PXL_WorldHandle callersH = nullptr) {
    worldH_ = Untouched();
    ForgetLog();
    return PXL_NewWorld(parentH, flags, rect, depth, 0, callersH,
                        callersH == nullptr ? &worldH_ : nullptr);
  }

  const Rect rect_ = Sized(10, 10);
  PXL_WorldHandle worldH_ = nullptr;
};

TEST_F(Creation, BeforeBirthIsRefused) {
  PXL_Death();
  EXPECT_EQ(New(nullptr, &rect_, 64), PXL_Err_INVALID);
  EXPECT_EQ(worldH_, Untouched());
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(1, 0, 0)",
                                 R"(Kp_ReportErrString(0x70003, 8, "PXL unborn."))"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Creation, NeedsTheExactMarkOfBirth) {
  PXLp_G.bornMark = 0xBECCB;
  EXPECT_EQ(New(nullptr, &rect_, 64), PXL_Err_INVALID);
  PXLp_G.bornMark = 1;
  EXPECT_EQ(New(nullptr, &rect_, 64), PXL_Err_INVALID);
}

TEST_F(Creation, WithoutAnyHandleIsRefusedWithoutWords) {
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect_, 64, 0, nullptr, nullptr), PXL_Err_REFUSED);
  EXPECT_THAT(Log(), ElementsAre(R"(Kp_ReportQuexErrString(0x70003, 8, 3, ""))"));
}

TEST_F(Creation, WithBothHandlesIsRefusedWithoutWords) {
  PXL_WorldHandle callersH = CallerHandle();
  worldH_ = Untouched();
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect_, 64, 0, callersH, &worldH_), PXL_Err_REFUSED);
  EXPECT_EQ(worldH_, Untouched());
  EXPECT_EQ(Record(callersH).headMark, 0x5A5A5A5AU);
  EXPECT_THAT(Log(), ElementsAre(R"(Kp_ReportQuexErrString(0x70003, 8, 3, ""))"));
}

TEST_F(Creation, RefusedGivesWhatTheReportGives) {
  recorder_.script.quexErrString = [](std::int32_t error) { return error + 100; };
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect_, 64, 0, nullptr, nullptr), 103);
  EXPECT_EQ(New(nullptr, &rect_, 64, 0x0400), 103);
  EXPECT_EQ(worldH_, Untouched());
  recorder_.script.quexErrString = [](std::int32_t) { return 0; };
  ASSERT_EQ(New(nullptr, &rect_, 64, 0x0400), PXL_Err_NONE);
  EXPECT_EQ(worldH_, Untouched());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Creation, LooksAtBirthThenAtHandlesThenAtFlags) {
  PXL_Death();
  EXPECT_EQ(PXL_NewWorld(nullptr, 0x0400, &rect_, 64, 0, nullptr, nullptr), PXL_Err_INVALID);
  PXL_Birth(0);
  ForgetLog();
  EXPECT_EQ(PXL_NewWorld(nullptr, 0x0400, &rect_, 64, 0, nullptr, nullptr), PXL_Err_REFUSED);
  EXPECT_EQ(recorder_.Count("Kp_ReportQuexErrString"), 1);
}

TEST_F(Creation, OfDeepWorldsAcceptsEveryFlagOfTheMask) {
  for (const std::uint32_t flag : {0x0008U, 0x0020U, 0x0100U, 0x0200U, 0x0800U, 0x1000U}) {
    for (const std::int32_t depth : {64, 128}) {
      ASSERT_EQ(New(nullptr, &rect_, depth, flag), PXL_Err_NONE) << flag;
      EXPECT_EQ(Record(worldH_).flags, flag);
    }
  }
}

TEST_F(Creation, OfDeepWorldsRefusesEveryOtherFlag) {
  for (int bit = 0; bit < 32; ++bit) {
    const std::uint32_t flag = std::uint32_t{1} << bit;
    if ((flag & 0x1B28U) != 0) continue;
    for (const std::int32_t depth : {64, 128}) {
      EXPECT_EQ(New(nullptr, &rect_, depth, flag), PXL_Err_REFUSED) << flag;
      EXPECT_EQ(worldH_, Untouched());
      EXPECT_THAT(Log(), ElementsAre(R"(Kp_ReportQuexErrString(0x70003, 8, 3, ""))"));
    }
  }
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Creation, RefusesOneWrongFlagAmongRightOnes) {
  EXPECT_EQ(New(nullptr, &rect_, 64, 0x1B28 | 0x0400), PXL_Err_REFUSED);
  EXPECT_EQ(New(nullptr, &rect_, 128, 0x0200 | 0x80000000U), PXL_Err_REFUSED);
}

TEST_F(Creation, OfShallowWorldsAcceptsAnyFlag) {
  ASSERT_EQ(New(nullptr, &rect_, 32, 0xFFFFE4D7U & ~0x0100U), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).flags, 0xFFFFE4D7U & ~0x0100U);
  ASSERT_EQ(New(nullptr, &rect_, 32, 0x0600), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).flags, 0x0600U);
}

TEST_F(Creation, TestsTheFlagsAgainstTheDepthAsItWasPassed) {
  ASSERT_EQ(New(nullptr, &rect_, -64, 0x0400), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 64);
  EXPECT_EQ(Record(worldH_).hasFrame, 1);
  PXL_WorldHandle parentH = worldH_;
  ASSERT_EQ(New(nullptr, &rect_, -128, 0x0400), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 128);
  ASSERT_EQ(New(parentH, &rect_, 0, 0x0400), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 64);
}

TEST_F(Creation, InItsOwnHandleNamesWhatItAllocates) {
  recorder_.Fail("K_AllocateHandleClear");
  EXPECT_EQ(New(nullptr, &rect_, 64), PXL_Err_NO_MEMORY);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(Creation, HandsItsHandleOutBeforeItBuilds) {
  std::vector<bool> handedOut;
  recorder_.OnCall([&](const std::string& name) {
    if (name == "HLock" || name == "malloc") {
      handedOut.push_back(worldH_ != Untouched() && worldH_ != nullptr);
    }
  });
  ASSERT_EQ(New(nullptr, &rect_, 64), PXL_Err_NONE);
  EXPECT_THAT(handedOut, ElementsAre(true, true));
}

TEST_F(Creation, StoresFlagsAndOwnerBeforeItBuilds) {
  bool seen = false;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "malloc") return;
    seen = true;
    EXPECT_EQ(Record(worldH_).flags, 0x0028U);
    EXPECT_EQ(Record(worldH_).ownsHandle, 1);
    EXPECT_EQ(Record(worldH_).headMark, 0U);
    EXPECT_TRUE(recorder_.IsLocked(AsHandle(worldH_)));
  });
  ASSERT_EQ(New(nullptr, &rect_, 64, 0x0028), PXL_Err_NONE);
  EXPECT_TRUE(seen);
}

TEST_F(Creation, MarksTheWorldThenUnlocksThenCounts) {
  bool seen = false;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "HUnlock") return;
    seen = true;
    EXPECT_EQ(Record(worldH_).headMark, 0xBECCAU);
    EXPECT_EQ(Record(worldH_).tailMark, 0xBECCAU);
    EXPECT_EQ(PXLp_G.worldCount, 0);
  });
  ASSERT_EQ(New(nullptr, &rect_, 64), PXL_Err_NONE);
  EXPECT_TRUE(seen);
  EXPECT_EQ(PXLp_G.worldCount, 1);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(worldH_)));
}

TEST_F(Creation, CountsEveryWorld) {
  for (int count = 1; count <= 3; ++count) {
    New(nullptr, &rect_, 64);
    EXPECT_EQ(PXLp_G.worldCount, count);
  }
  New(nullptr, &rect_, 96);
  EXPECT_EQ(PXLp_G.worldCount, 3);
}

TEST_F(Creation, InTheCallersHandleZeroesItUnderALockOfItsOwn) {
  PXL_WorldHandle callersH = CallerHandle();
  int unlocks = 0;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "HUnlock" || unlocks++ > 0) return;
    EXPECT_TRUE(IsZero(*callersH, 0, sizeof(PXL_World)));
  });
  ASSERT_EQ(New(nullptr, &rect_, 64, 0, callersH), PXL_Err_NONE);
  EXPECT_EQ(unlocks, 2);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "HUnlock(caller)", "HLock(caller)",
                                 "K_PurgeLoop(820, 1)", "malloc(820)", "HUnlock(caller)"));
  EXPECT_EQ(Record(callersH).ownsHandle, 0);
  EXPECT_EQ(Record(callersH).headMark, 0xBECCAU);
  EXPECT_EQ(Record(callersH).tailMark, 0xBECCAU);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
}

TEST_F(Creation, LeavesTheBytesBehindTheRecordAlone) {
  Handle handle = recorder_.NewHandle(sizeof(PXL_World) + 8);
  std::fill_n(*handle, sizeof(PXL_World) + 8, char{0x5A});
  auto* callersH = reinterpret_cast<PXL_WorldHandle>(handle);
  ASSERT_EQ(New(nullptr, &rect_, 64, 0, callersH), PXL_Err_NONE);
  for (std::size_t i = 0; i < 8; ++i) EXPECT_EQ((*handle)[sizeof(PXL_World) + i], 0x5A);
}

TEST_F(Creation, LeavesEveryFieldThatItDoesNotSetZero) {
  ASSERT_EQ(New(nullptr, &rect_, 64, 0, CallerHandle()), PXL_Err_NONE);
  PXL_WorldHandle callersH = CallerHandle();
  ASSERT_EQ(New(nullptr, &rect_, 64, 0, callersH), PXL_Err_NONE);
  const PXL_World& world = Record(callersH);
  EXPECT_EQ(world.gworld, nullptr);
  EXPECT_EQ(world.gdevice, nullptr);
  EXPECT_EQ(world.hasGWorld, 0);
  EXPECT_EQ(world.pixels.lockCount, 0);
  EXPECT_EQ(world.pixels.baseAddr, nullptr);
  EXPECT_EQ(world.pixels.provider, nullptr);
  EXPECT_TRUE(IsZero(&world, 41, 48));
  EXPECT_TRUE(IsZero(&world, 52, 56));
  EXPECT_TRUE(IsZero(&world, 92, 96));
  EXPECT_TRUE(IsZero(&world, 108, 112));
}

TEST_F(Creation, WithoutDepthAndParentIsRefused) {
  EXPECT_EQ(New(nullptr, &rect_, 0), PXL_Err_REFUSED);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)",
                                 R"(Kp_ReportErrString(0x70003, 8, )"
                                 R"("can\xD5t specify PXL_Depth_SHARE without parent."))",
                                 "HLock(handle1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(Creation, WithoutRectangleAndParentIsRefused) {
  EXPECT_EQ(New(nullptr, nullptr, 32), PXL_Err_REFUSED);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportErrString"}),
              ElementsAre(R"(Kp_ReportErrString(0x70003, 8, )"
                          R"("can\xD5t specify NULL rect without parent."))"));
}

TEST_F(Creation, WithoutDepthAndRectangleSaysBoth) {
  PXL_WorldHandle callersH = CallerHandle();
  EXPECT_EQ(New(nullptr, nullptr, 0, 0x0123, callersH), PXL_Err_REFUSED);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "HUnlock(caller)", "HLock(caller)",
                                 R"(Kp_ReportErrString(0x70003, 8, )"
                                 R"("can\xD5t specify PXL_Depth_SHARE without parent."))",
                                 R"(Kp_ReportErrString(0x70003, 8, )"
                                 R"("can\xD5t specify NULL rect without parent."))",
                                 "HLock(caller)", "HUnlock(caller)"));
  // Neither pixels nor bounds were touched.
  EXPECT_EQ(Record(callersH).flags, 0x0123U);
  EXPECT_TRUE(IsZero(*callersH, 0, 4));
  EXPECT_TRUE(IsZero(*callersH, 8, sizeof(PXL_World)));
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
}

TEST_F(Creation, MissingOnlyTheDepthLeavesTheBoundsUnwritten) {
  PXL_WorldHandle callersH = CallerHandle();
  EXPECT_EQ(New(nullptr, &rect_, 0, 0x0800, callersH), PXL_Err_REFUSED);
  EXPECT_TRUE(IsZero(*callersH, 8, sizeof(PXL_World)));
}

TEST_F(Creation, MissingOnlyTheRectangleLeavesTheBoundsUnwritten) {
  PXL_WorldHandle callersH = CallerHandle();
  EXPECT_EQ(New(nullptr, nullptr, -64, 0x0800, callersH), PXL_Err_REFUSED);
  EXPECT_TRUE(IsZero(*callersH, 8, sizeof(PXL_World)));
}

TEST_F(Creation, TakesDepthAndSizeFromTheParent) {
  PXL_WorldHandle parentH = Make(32, Rect{5, 7, 25, 47}, PXL_Flag_NO_PLATFORM);
  ASSERT_EQ(New(parentH, nullptr, 0), PXL_Err_NONE);
  const PXL_World& world = Record(worldH_);
  EXPECT_EQ(world.depth, 32);
  EXPECT_EQ(world.width, 40);
  EXPECT_EQ(world.height, 20);
  EXPECT_EQ(recorder::Text(&world.bounds), "{0, 0, 20, 40}");
  // The parent's way of holding pixels is not inherited, let alone its pixels.
  EXPECT_EQ(world.flags, 0U);
  EXPECT_EQ(world.hasGWorld, 1);
  EXPECT_NE(Record(parentH).pixels.frame, nullptr);
  EXPECT_EQ(world.pixels.frame, nullptr);
}

TEST_F(Creation, SharesNothingButNumbersWithTheParent) {
  PXL_WorldHandle surfaceH = Make(32, rect_);
  ASSERT_EQ(New(surfaceH, nullptr, 0), PXL_Err_NONE);
  EXPECT_NE(Record(worldH_).gworld, Record(surfaceH).gworld);
  EXPECT_NE(Record(worldH_).gdevice, Record(surfaceH).gdevice);
  PXL_WorldHandle frameH = Make(64, rect_);
  ASSERT_EQ(New(frameH, nullptr, 0), PXL_Err_NONE);
  EXPECT_NE(Record(worldH_).pixels.frame, Record(frameH).pixels.frame);
  PXL_WorldHandle mappedH = Make(32, rect_, PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  ASSERT_EQ(New(mappedH, nullptr, 0, PXL_Flag_DEFERRED), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).pixels.provider, nullptr);
  PXL_DisposeWorld(mappedH);
}

TEST_F(Creation, PrefersItsOwnArgumentsToTheParents) {
  PXL_WorldHandle parentH = Make(32, Sized(40, 20));
  ASSERT_EQ(New(parentH, &rect_, 64), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 64);
  EXPECT_EQ(Record(worldH_).width, 10);
  ASSERT_EQ(New(parentH, &rect_, 0), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 32);
  EXPECT_EQ(Record(worldH_).width, 10);
  ASSERT_EQ(New(parentH, nullptr, 128), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 128);
  EXPECT_EQ(Record(worldH_).width, 40);
}

TEST_F(Creation, ReadsTheParentWhereverItHasMoved) {
  PXL_WorldHandle parentH = Make(64, Sized(40, 20));
  recorder_.OnCall([&](const std::string&) { recorder_.MoveBlocks(); });
  ASSERT_EQ(New(parentH, nullptr, 0), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 64);
  EXPECT_EQ(Record(worldH_).width, 40);
  EXPECT_EQ(Record(worldH_).height, 20);
}

TEST_F(Creation, DoesNotAskWhetherTheParentLives) {
  PXL_WorldHandle parentH = Make(64, Sized(40, 20));
  Record(parentH).headMark = 0;
  EXPECT_EQ(New(parentH, nullptr, 0), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("Kp_ReportQuexErrString"), 0);
}

TEST_F(Creation, TakesANegativeDepthOfTheParentForItsAbsoluteValue) {
  PXL_WorldHandle parentH = Make(64, rect_);
  Record(parentH).depth = -128;
  ASSERT_EQ(New(parentH, nullptr, 0, 0x0400), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 128);
}

TEST_F(Creation, TakesADepthOfZeroOfTheParentAsItIs) {
  PXL_WorldHandle parentH = Make(64, rect_);
  Record(parentH).depth = 0;
  ASSERT_EQ(New(parentH, nullptr, 0, PXL_Flag_DEFERRED), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 0);
  EXPECT_EQ(recorder_.Count("Kp_ReportErrString"), 0);
}

TEST_F(Creation, TakesANegativeDepthForItsAbsoluteValue) {
  ASSERT_EQ(New(nullptr, &rect_, -32), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).hasGWorld, 1);
  EXPECT_EQ(recorder_.LogOf({"NewGWorld"})[0], "NewGWorld(32, {0, 0, 10, 10}, null, null, 0)");
  ASSERT_EQ(New(nullptr, &rect_, -32, PXL_Flag_NO_PLATFORM), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 32);
  ASSERT_EQ(New(nullptr, &rect_, -8, PXL_Flag_DEFERRED), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).depth, 8);
}

TEST_F(Creation, SurvivesTheMostNegativeDepth) {
  EXPECT_EQ(New(nullptr, &rect_, INT32_MIN, PXL_Flag_DEFERRED), PXL_Err_NO_MEMORY);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_EQ(New(nullptr, &rect_, INT32_MIN, PXL_Flag_NO_PLATFORM), PXL_Err_REFUSED);
}

TEST_F(Creation, KeepsTheRectangleWhereItIs) {
  const Rect rect{10, 20, 110, 220};
  for (const std::uint32_t flags :
       {0U, std::uint32_t{PXL_Flag_NO_PLATFORM}, std::uint32_t{PXL_Flag_DEFERRED}}) {
    ASSERT_EQ(New(nullptr, &rect, 32, flags), PXL_Err_NONE);
    EXPECT_EQ(recorder::Text(&Record(worldH_).bounds), "{10, 20, 110, 220}");
    EXPECT_EQ(Record(worldH_).width, 200);
    EXPECT_EQ(Record(worldH_).height, 100);
  }
}

TEST_F(Creation, StoresTheLowHalfOfASizeBeyond16Bits) {
  const Rect rect{-32768, 0, 32767, 1};
  ASSERT_EQ(New(nullptr, &rect, 32, PXL_Flag_DEFERRED), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH_).height, -1);
  EXPECT_EQ(Record(worldH_).pixels.frameSize, 65535U * 16U + 16U);
}

TEST_F(Creation, IgnoresItsReservedArgument) {
  for (const std::int32_t depth : {32, 64}) {
    New(nullptr, &rect_, depth);
    const std::vector<std::string> with0 = Log();
    PXL_DisposeWorld(worldH_);
    ForgetLog();
    PXL_NewWorld(nullptr, 0, &rect_, depth, 0xFFFFFFFF, nullptr, &worldH_);
    EXPECT_EQ(Log().size(), with0.size());
    PXL_DisposeWorld(worldH_);
  }
}

TEST_F(Creation, InTheCallersHandleThatFailsLeavesItUnlockedWithoutMarks) {
  PXL_WorldHandle callersH = CallerHandle();
  EXPECT_EQ(New(nullptr, &rect_, 96, 0, callersH), PXL_Err_REFUSED);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(caller)", "HUnlock(caller)", "HLock(caller)",
                          R"(K_ReportFailedVerification(0x7003B, 72, 0, )"
                          R"("PXLp_NewWorldNoPlatformBacking() only allowed on 32, 64 and 128bpp )"
                          R"(worlds"))",
                          "HLock(caller)", "HUnlock(caller)"));
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
  EXPECT_EQ(Record(callersH).headMark, 0U);
  EXPECT_EQ(Record(callersH).tailMark, 0U);
  // The bounds are written all the same.
  EXPECT_EQ(Record(callersH).width, 10);
  EXPECT_EQ(Record(callersH).height, 10);
  EXPECT_EQ(recorder::Text(&Record(callersH).bounds), "{0, 0, 10, 10}");
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Creation, LetsAFailureOfTheSettingsPassOutAndLeavesNothingBehind) {
  PXLp_AccessFrameSettings() = {};
  recorder_.Throw("GetEntry", [] { throw std::runtime_error("no database"); });
  EXPECT_THROW(New(nullptr, &rect_, 64), std::runtime_error);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_TRUE(PXLp_AccessFrameSettings().loaded);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "Instance()",
                                 R"(GetEntry("VirtualAllocFrames", "true"))", "HLock(handle1)",
                                 "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);

  ASSERT_EQ(New(nullptr, &rect_, 64), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("GetEntry"), 0);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(Creation, UnlocksTheCallersHandleWhenAFailureOfTheSettingsPassesOut) {
  PXLp_AccessFrameSettings() = {};
  PXL_WorldHandle callersH = CallerHandle();
  recorder_.Throw("Instance", [] { throw 3L; });
  EXPECT_THROW(New(nullptr, &rect_, 64, 0, callersH), long);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
  EXPECT_EQ(Record(callersH).headMark, 0U);
}

TEST_F(Creation, BuildsInTheRecordItIsGiven) {
  auto* callersH = CallerHandle();
  Record(callersH) = {};
  EXPECT_EQ(PXLp_BuildWorld({nullptr, PXL_Flag_DEFERRED, &rect_, 64}, callersH), PXL_Err_NONE);
  EXPECT_EQ(Record(callersH).pixels.frameSize, 820U);
  EXPECT_EQ(Record(callersH).headMark, 0U);
}
