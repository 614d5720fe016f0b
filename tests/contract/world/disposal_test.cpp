// PXL_DisposeWorld.
#include "world/disposal.h"

#include <string>
#include <utility>
#include <vector>

#include "memory/frame_settings.h"
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// A provider that logs its calls and returns what a test sets.
struct FakeProvider {
  std::int32_t freeStatus = 0;
  std::int32_t releaseStatus = 0;
  std::vector<std::string> calls;
  void** frameSlot = nullptr;
  PXL_PixelProvider** providerSlot = nullptr;
};

FakeProvider* fake;

std::int32_t FakeFree(void* context, void** frame) {
  fake->calls.emplace_back(context == fake ? "free" : "free of another context");
  fake->frameSlot = frame;
  return fake->freeStatus;
}

std::int32_t FakeRelease(PXL_PixelProvider** provider) {
  fake->calls.emplace_back("release");
  fake->providerSlot = provider;
  return fake->releaseStatus;
}

std::int32_t Unexpected(void*, void**) {
  fake->calls.emplace_back("map or unmap");
  return 0;
}

}  // namespace

class Disposal : public Contract {
 protected:
  Disposal() {
    PXLp_LoadFrameSettings();
    BeBorn();
    fake = &fake_;
    provider_ = {Unexpected, Unexpected, FakeFree, FakeRelease, &fake_};
  }
  // A World of the caller's handle, with the fake provider.
  PXL_WorldHandle Provided() {
    PXL_WorldHandle worldH = CallerHandle();
    const Rect rect = Sized(10, 10);
    PXL_NewWorld(nullptr, PXL_Flag_DEFERRED, &rect, 32, 0, worldH, nullptr);
    Record(worldH).pixels.provider = &provider_;
    ForgetLog();
    return worldH;
  }

  FakeProvider fake_;
  PXL_PixelProvider provider_{};
};

TEST_F(Disposal, OfAHeapFrameFreesItAndTheHandle) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(handle1)", "free(heap1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Disposal, OfAPoolFrameGivesItBackToThePool) {
  PXL_WorldHandle worldH = Make(128, Sized(1000, 1000));
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(handle1)", "K_FreeRecycledPtr(pool1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(Disposal, OfASurfaceDisposesOfIt) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 10));
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(handle1)", "DisposeGWorld(gworld1)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(Disposal, InTheCallersHandleUnlocksIt) {
  PXL_WorldHandle worldH = CallerHandle();
  const Rect rect = Sized(10, 10);
  PXL_NewWorld(nullptr, 0, &rect, 64, 0, worldH, nullptr);
  void* frame = Record(worldH).pixels.frame;
  PXL_LockPixels(0, worldH, nullptr);
  EXPECT_NE(Record(worldH).pixels.baseAddr, nullptr);
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "free(heap1)", "HUnlock(caller)"));
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(worldH)));
  const PXL_World& world = Record(worldH);
  EXPECT_EQ(world.headMark, 0U);
  EXPECT_EQ(world.tailMark, 0U);
  EXPECT_EQ(world.pixels.baseAddr, nullptr);
  // The rest of the record stays, the address of the freed block included.
  EXPECT_EQ(world.pixels.frame, frame);
  EXPECT_EQ(world.pixels.frameSize, 820U);
  EXPECT_EQ(world.pixels.lockCount, 1);
  EXPECT_EQ(world.hasFrame, 1);
  EXPECT_EQ(world.width, 10);
}

TEST_F(Disposal, ClearsTheMarksBeforeItLetsTheHandleGo) {
  for (const char* call : {"K_FreeHandle", "HUnlock"}) {
    PXL_WorldHandle worldH = nullptr;
    if (std::string(call) == "HUnlock") {
      worldH = CallerHandle();
      const Rect rect = Sized(10, 10);
      PXL_NewWorld(nullptr, 0, &rect, 64, 0, worldH, nullptr);
    } else {
      worldH = Make(64, Sized(10, 10));
    }
    bool seen = false;
    recorder_.OnCall([&](const std::string& name) {
      if (name != call) return;
      seen = true;
      EXPECT_EQ(Record(worldH).headMark, 0U);
      EXPECT_EQ(Record(worldH).tailMark, 0U);
      EXPECT_TRUE(recorder_.IsLocked(AsHandle(worldH)));
    });
    EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
    EXPECT_TRUE(seen);
    recorder_.OnCall(nullptr);
  }
}

TEST_F(Disposal, KeepsTheMarksUntilThePixelsAreReleased) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  bool seen = false;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "free" || seen) return;
    seen = true;
    EXPECT_EQ(Record(worldH).headMark, 0xBECCAU);
  });
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_TRUE(seen);
}

TEST_F(Disposal, TwiceIsRefusedTheSecondTime) {
  PXL_WorldHandle worldH = CallerHandle();
  const Rect rect = Sized(10, 10);
  PXL_NewWorld(nullptr, 0, &rect, 64, 0, worldH, nullptr);
  ASSERT_NE(Make(64, rect), nullptr);
  EXPECT_EQ(PXLp_G.worldCount, 2);
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_EQ(PXLp_G.worldCount, 1);
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_INVALID);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(54, 0, 0)",
                                 R"(Kp_ReportQuexErrString(0x70006, 8, 2, "checking world"))"));
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(Disposal, OfADamagedWorldTouchesNothing) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  Record(worldH).tailMark = 7;
  recorder_.script.quexErrString = [](std::int32_t) { return 55; };
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), 55);
  EXPECT_EQ(Log().size(), 2U);
  EXPECT_EQ(Record(worldH).headMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(Disposal, NeedsNoBirth) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  PXL_Death();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Disposal, DoesNotLookAtLocks) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 10));
  PXL_LockPixels(0, worldH, nullptr);
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(handle1)", "DisposeGWorld(gworld1)", "K_FreeHandle(handle1)"));
}

TEST_F(Disposal, AsksAProviderToFreeAndThenToReleaseItself) {
  PXL_WorldHandle worldH = Provided();
  int pixels = 0;
  Record(worldH).pixels.baseAddr = &pixels;
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(fake_.calls, ElementsAre("free", "release"));
  EXPECT_EQ(fake_.frameSlot, &Record(worldH).pixels.frame);
  EXPECT_EQ(fake_.providerSlot, &Record(worldH).pixels.provider);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "HUnlock(caller)"));
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Disposal, LeavesTheFrameToTheProvider) {
  PXL_WorldHandle worldH = Provided();
  int frame = 0;
  Record(worldH).pixels.frame = &frame;
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).pixels.frame, &frame);
  EXPECT_EQ(recorder_.Count("free"), 0);
}

TEST_F(Disposal, KeepsAProviderThatCouldNotFreeAndTheCountWithIt) {
  PXL_WorldHandle worldH = Provided();
  int pixels = 0;
  Record(worldH).pixels.baseAddr = &pixels;
  fake_.freeStatus = 61;
  EXPECT_EQ(PXL_DisposeWorld(worldH), 61);
  EXPECT_THAT(fake_.calls, ElementsAre("free"));
  EXPECT_EQ(Record(worldH).pixels.provider, &provider_);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  EXPECT_EQ(Record(worldH).headMark, 0U);
  EXPECT_EQ(Record(worldH).tailMark, 0U);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(worldH)));
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(Disposal, GivesTheStatusOfAProviderThatCouldNotReleaseItself) {
  PXL_WorldHandle worldH = Provided();
  fake_.releaseStatus = -3;
  EXPECT_EQ(PXL_DisposeWorld(worldH), -3);
  EXPECT_EQ(Record(worldH).headMark, 0U);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(Disposal, GoesOnWithSurfaceAndHandleWhenThePixelsCouldNotBeReleased) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 10));
  Record(worldH).hasFrame = 1;
  Record(worldH).pixels.provider = &provider_;
  fake_.freeStatus = 61;
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), 61);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(handle1)", "DisposeGWorld(gworld1)", "K_FreeHandle(handle1)"));
  EXPECT_EQ(PXLp_G.worldCount, 1);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(Disposal, OfAMappedWorldWhoseFileCannotBeResetLeavesItCounted) {
  PXL_WorldHandle worldH = CallerHandle();
  const Rect rect = Sized(10, 10);
  PXL_NewWorld(nullptr, PXL_Flag_DEFERRED | PXL_Flag_MAPPED, &rect, 32, 0, worldH, nullptr);
  ForgetLog();
  recorder_.Throw("Reset", [] { throw 9L; });
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "K_AccountSystemAllocation(-496)", "Reset()",
                                 "HUnlock(caller)"));
  EXPECT_EQ(PXLp_G.worldCount, 1);
  PXL_PixelProvider*& provider = Record(worldH).pixels.provider;
  ASSERT_NE(provider, nullptr);
  EXPECT_EQ(provider->release(&provider), 0);
}

TEST_F(Disposal, LooksForASurfaceOnlyWhereThereIsOne) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 10));
  GWorldPtr surface = Record(worldH).gworld;
  Record(worldH).hasGWorld = 0;
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(handle1)", "K_FreeHandle(handle1)"));
  DisposeGWorld(surface);

  worldH = Make(32, Sized(10, 10));
  surface = Record(worldH).gworld;
  Record(worldH).gworld = nullptr;
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("DisposeGWorld"), 0);
  DisposeGWorld(surface);
}

TEST_F(Disposal, FreesFramesOnlyOfWorldsThatHaveThem) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  Record(worldH).hasFrame = 0;
  void* frame = Record(worldH).pixels.frame;
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(handle1)", "K_FreeHandle(handle1)"));
  PXL_FreeFrame(frame, 820);
}

TEST_F(Disposal, DoesNotCountAWorldThatWasNeverFinished) {
  PXL_WorldHandle worldH = CallerHandle();
  Record(worldH) = {};
  EXPECT_EQ(PXLp_ReleaseWorld(worldH), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(caller)", "HUnlock(caller)"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Disposal, OfNoHandleDoesNothing) {
  EXPECT_EQ(PXLp_ReleaseWorld(nullptr), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Disposal, OfPixelsAloneKeepsTheFramesAddress) {
  PXL_PixelBuffer pixels{};
  pixels.frameSize = 64;
  PXL_AllocateFrameQuiet(64, 0, &pixels.frame);
  pixels.baseAddr = pixels.frame;
  void* frame = pixels.frame;
  ForgetLog();
  EXPECT_EQ(PXLp_ReleasePixels(&pixels), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("free(heap1)"));
  EXPECT_EQ(pixels.baseAddr, nullptr);
  EXPECT_EQ(pixels.frame, frame);
}

// Blocks that are not locked move in every single call.
TEST_F(Disposal, AndCreationFollowARecordThatMoves) {
  const std::pair<std::int32_t, std::uint32_t> kinds[] = {
      {64, 0}, {32, PXL_Flag_NO_PLATFORM}, {32, 0}, {8, PXL_Flag_DEFERRED}, {32, 0x1800}};
  recorder_.OnCall([this](const std::string&) { recorder_.MoveBlocks(); });
  for (const auto& [depth, flags] : kinds) {
    PXL_WorldHandle worldH = Make(depth, Sized(10, 6), flags);
    ASSERT_NE(worldH, nullptr);
    recorder_.MoveBlocks();
    const PXL_World& world = Record(worldH);
    EXPECT_EQ(world.flags, flags);
    EXPECT_EQ(world.depth, depth);
    EXPECT_EQ(world.width, 10);
    EXPECT_EQ(world.height, 6);
    EXPECT_EQ(world.hasGWorld + world.hasFrame, 1);
    EXPECT_NE(world.pixels.rowBytes, 0);
    EXPECT_EQ(world.ownsHandle, 1);
    EXPECT_EQ(world.headMark, 0xBECCAU);
    EXPECT_EQ(world.tailMark, 0xBECCAU);
    EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
    EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  }
  EXPECT_EQ(PXLp_G.worldCount, 0);
}
