// Worlds whose pixels are module memory.
#include <algorithm>

#include "memory/frame_settings.h"
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class FrameWorld : public Contract {
 protected:
  FrameWorld() {
    PXLp_LoadFrameSettings();
    BeBorn();
  }
  std::int32_t New(std::int32_t depth, const Rect& rect, std::uint32_t flags = 0) {
    return PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH_);
  }
  [[nodiscard]] const PXL_World& World() const { return Record(worldH_); }

  PXL_WorldHandle worldH_ = nullptr;
};

TEST_F(FrameWorld, OfSmallSizeLivesOnTheHeap) {
  ASSERT_EQ(New(64, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "K_PurgeLoop(820, 1)", "malloc(820)",
                                 "HUnlock(handle1)"));
  EXPECT_EQ(recorder_.NameOf(World().pixels.frame), "heap1");
  EXPECT_EQ(World().pixels.frameSize, 820U);
  EXPECT_EQ(World().pixels.rowBytes, 80);
  EXPECT_EQ(World().hasFrame, 1);
  EXPECT_EQ(World().hasGWorld, 0);
  EXPECT_EQ(World().gworld, nullptr);
  EXPECT_EQ(World().depth, 64);
  EXPECT_EQ(World().pixels.baseAddr, nullptr);
  EXPECT_EQ(World().pixels.lockCount, 0);
  EXPECT_EQ(World().ownsHandle, 1);
}

TEST_F(FrameWorld, OfLargeSizeLivesInThePool) {
  ASSERT_EQ(New(128, Sized(1920, 1080), PXL_Flag_CLEAR), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "K_PurgeLoop(33177620, 1)",
                                 R"(K_AllocateRecycledPtr(0x70003, "PXL WORLD", 33177620))",
                                 "K_GetRecycledPtrBaseAddress(ref of pool1)", "HUnlock(handle1)"));
  EXPECT_EQ(World().pixels.rowBytes, 30720);
  EXPECT_EQ(World().pixels.frameSize, 33177620U);
  const auto* first =
      static_cast<const unsigned char*>(World().pixels.frame) + World().pixels.alignOffset;
  EXPECT_TRUE(std::all_of(first, first + 30720 * 1080, [](unsigned char b) { return b == 0; }));
  EXPECT_EQ(World().headMark, 0xBECCAU);
  EXPECT_EQ(World().tailMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(FrameWorld, ThatCannotBeHadIsReportedByItsSize) {
  recorder_.FailAlways("K_AllocateRecycledPtr");
  worldH_ = reinterpret_cast<PXL_WorldHandle>(&worldH_);
  EXPECT_EQ(New(128, Sized(1920, 1080), PXL_Flag_CLEAR), PXL_Err_NO_MEMORY);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(
      Log(),
      ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                  R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))", "HLock(handle1)",
                  "K_PurgeLoop(33177620, 1)",
                  R"(K_AllocateRecycledPtr(0x70003, "PXL WORLD", 33177620))",
                  "K_GetRecycledPtrBaseAddress(null)",
                  R"(K_AllocateRecycledPtr(0x70003, "PXL WORLD", 33177620))",
                  "K_GetRecycledPtrBaseAddress(null)", StartsWith("K_ZStringToUTF16String("),
                  "NumberToString(1920)", "NumberToString(1080)", "NumberToString(32)",
                  StartsWith("ReplaceInString("),
                  StartsWith("K_ReportError(0x70005, 8, u\"Unable to allocate enough memory to "
                             "render the current frame (1920 x 1080 @ 32 bpc). "),
                  "HLock(handle1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(FrameWorld, ThatCannotBeHadLeavesNoFrameInTheCallersRecord) {
  recorder_.FailAlways("malloc");
  PXL_WorldHandle callersH = CallerHandle();
  const Rect rect = Sized(10, 10);
  EXPECT_EQ(PXL_NewWorld(nullptr, 0, &rect, 64, 0, callersH, nullptr), PXL_Err_NO_MEMORY);
  const PXL_World& world = Record(callersH);
  EXPECT_EQ(world.hasFrame, 0);
  EXPECT_EQ(world.depth, 0);
  EXPECT_EQ(world.pixels.frame, nullptr);
  EXPECT_EQ(world.pixels.frameSize, 0U);
  EXPECT_EQ(world.pixels.rowBytes, 0);
  EXPECT_EQ(world.width, 10);
  EXPECT_EQ(world.headMark, 0U);
  EXPECT_EQ(recorder_.Count("free"), 0);
}

TEST_F(FrameWorld, GivesTheAllocatorsStatusWhenThereIsNoFrame) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt, void*) { return 33; };
  EXPECT_EQ(New(64, Sized(10, 10)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.Count("K_ReportError"), 1);
}

TEST_F(FrameWorld, TakesAFrameThatComesWithACode) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    attempt(context, &done);
    return -9;
  };
  ASSERT_EQ(New(64, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(World().pixels.frame), "heap1");
  EXPECT_EQ(PXLp_G.worldCount, 1);
  EXPECT_EQ(recorder_.LogOf({"Kp_ReportError", "K_ReportError"}).size(), 0U);
}

TEST_F(FrameWorld, IsMadeAt32BitsOnRequest) {
  ASSERT_EQ(New(32, Sized(10, 10), PXL_Flag_NO_PLATFORM), PXL_Err_NONE);
  EXPECT_EQ(World().depth, 32);
  EXPECT_EQ(World().hasFrame, 1);
  EXPECT_EQ(World().hasGWorld, 0);
  EXPECT_EQ(World().pixels.rowBytes, 48);
  EXPECT_EQ(World().pixels.frameSize, 496U);
  EXPECT_EQ(recorder_.Count("NewGWorld"), 0);
}

TEST_F(FrameWorld, IsMadeAt128BitsOfItself) {
  ASSERT_EQ(New(128, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.rowBytes, 160);
  EXPECT_EQ(World().pixels.frameSize, 1620U);
}

TEST_F(FrameWorld, IsNotMadeAtAnyOtherDepth) {
  const std::pair<std::int32_t, std::uint32_t> refused[] = {
      {8, 0x0200}, {16, 0x0200}, {31, 0x0200}, {33, 0x0200}, {63, 0x0200},
      {65, 0},     {96, 0},      {127, 0},     {129, 0},     {256, 0}};
  for (const auto& [depth, flags] : refused) {
    ForgetLog();
    EXPECT_EQ(New(depth, Sized(10, 10), flags), PXL_Err_REFUSED) << depth;
    EXPECT_EQ(worldH_, nullptr);
    EXPECT_THAT(recorder_.LogOf({"K_ReportFailedVerification"}),
                ElementsAre("K_ReportFailedVerification(0x7003B, 72, 0, "
                            "\"PXLp_NewWorldNoPlatformBacking() only allowed on 32, 64 and 128bpp "
                            "worlds\")"));
    EXPECT_EQ(recorder_.Count("NewGWorld"), 0);
    EXPECT_EQ(recorder_.Count("K_PurgeLoop"), 0);
  }
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(FrameWorld, WithTooLongARowIsReportedOnce) {
  EXPECT_EQ(New(64, Sized(32767, 1)), PXL_Err_REFUSED);
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportError", "K_ReportError"}),
              ElementsAre(StartsWith("Kp_ReportError(0x70035, 8 error 0 ")));
  EXPECT_EQ(recorder_.Count("K_PurgeLoop"), 0);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(FrameWorld, BeyondTheLimitIsReportedOnce) {
  EXPECT_EQ(New(32, Sized(32765, 16384), PXL_Flag_NO_PLATFORM), PXL_Err_NO_MEMORY);
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportError", "K_ReportError"}),
              ElementsAre(HasSubstr("(2.0 GB)")));
  EXPECT_EQ(recorder_.Count("K_PurgeLoop"), 0);
}

TEST_F(FrameWorld, OfNoHeightIsAccepted) {
  ASSERT_EQ(New(64, Sized(10, 0)), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.frameSize, 20U);
}

TEST_F(FrameWorld, KeepsWhatTheMemoryHeldUnlessAskedToClear) {
  ASSERT_EQ(New(64, Sized(10, 10)), PXL_Err_NONE);
  const auto* frame = static_cast<const unsigned char*>(World().pixels.frame);
  EXPECT_TRUE(std::all_of(frame, frame + 820, [](unsigned char b) { return b == 0xA5; }));
}

TEST_F(FrameWorld, ClearsItsRowsAndNothingElse) {
  ASSERT_EQ(New(64, Sized(10, 10), PXL_Flag_CLEAR), PXL_Err_NONE);
  const auto* frame = static_cast<const unsigned char*>(World().pixels.frame);
  const std::uint64_t offset = World().pixels.alignOffset;
  for (std::uint64_t i = 0; i < 820; ++i) {
    EXPECT_EQ(frame[i], i >= offset && i < offset + 800 ? 0 : 0xA5) << i;
  }
}

TEST_F(FrameWorld, StartsItsPixelsOnA16ByteBoundary) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    attempt(context, &done);
    auto* address = static_cast<void**>(context) + 1;
    *address = static_cast<char*>(*address) + 5;
    return 0;
  };
  ASSERT_EQ(New(64, Sized(10, 10)), PXL_Err_NONE);
  const auto first =
      reinterpret_cast<std::uintptr_t>(World().pixels.frame) + World().pixels.alignOffset;
  EXPECT_EQ(first % 16, 0U);
  EXPECT_GT(World().pixels.alignOffset, 0U);
  EXPECT_LT(World().pixels.alignOffset, 16U);
}

TEST_F(FrameWorld, DoesNotTellTheAllocatorThatItIsPurgeable) {
  ASSERT_EQ(New(64, Sized(10, 10)), PXL_Err_NONE);
  const std::vector<std::string> plain = recorder_.LogOf({"K_PurgeLoop", "malloc"});
  ForgetLog();
  ASSERT_EQ(New(64, Sized(10, 10), PXL_Flag_PURGEABLE), PXL_Err_NONE);
  EXPECT_EQ(recorder_.LogOf({"K_PurgeLoop", "malloc"}), plain);
  EXPECT_EQ(World().flags, 0x0020U);
}

TEST_F(FrameWorld, IsNotMappedWithoutBeingDeferred) {
  ASSERT_EQ(New(64, Sized(10, 10), PXL_Flag_MAPPED), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.provider, nullptr);
  EXPECT_EQ(recorder_.NameOf(World().pixels.frame), "heap1");
  EXPECT_EQ(recorder_.Count("Init"), 0);
}
