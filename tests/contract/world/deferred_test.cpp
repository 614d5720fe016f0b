// Worlds that are made without pixel memory.
#include <utility>

#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class DeferredWorld : public Contract {
 protected:
  DeferredWorld() { BeBorn(); }
  std::int32_t New(std::int32_t depth, const Rect& rect, std::uint32_t flags = 0) {
    ForgetLog();
    return PXL_NewWorld(nullptr, flags | PXL_Flag_DEFERRED, &rect, depth, 0, nullptr, &worldH_);
  }
  [[nodiscard]] const PXL_World& World() const { return Record(worldH_); }

  PXL_WorldHandle worldH_ = nullptr;
};

class MappedWorld : public DeferredWorld {
 protected:
  ~MappedWorld() override {
    if (worldH_ != nullptr) Dispose();
  }
  std::int32_t Dispose() { return PXL_DisposeWorld(std::exchange(worldH_, nullptr)); }
  std::int32_t NewMapped(std::int32_t depth, const Rect& rect, std::uint32_t flags = 0) {
    return New(depth, rect, flags | PXL_Flag_MAPPED);
  }
};

TEST_F(DeferredWorld, HasGeometryOnly) {
  ASSERT_EQ(New(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "HUnlock(handle1)"));
  EXPECT_EQ(World().hasFrame, 1);
  EXPECT_EQ(World().hasGWorld, 0);
  EXPECT_EQ(World().depth, 32);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(World().pixels.alignOffset, 0U);
  EXPECT_EQ(World().pixels.frameSize, 496U);
  EXPECT_EQ(World().pixels.rowBytes, 48);
  EXPECT_EQ(World().pixels.provider, nullptr);
  EXPECT_EQ(World().headMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.worldCount, 1);
}

TEST_F(DeferredWorld, MayHaveAnyDepth) {
  for (const std::int32_t depth : {1, 8, 16, 64, 96, 128}) {
    ASSERT_EQ(New(depth, Sized(10, 10)), PXL_Err_NONE) << depth;
    EXPECT_EQ(World().depth, depth);
    EXPECT_EQ(World().pixels.frame, nullptr);
  }
  EXPECT_EQ(recorder_.Count("K_ReportFailedVerification"), 0);
}

TEST_F(DeferredWorld, NeedsNoPlatformAndNeitherDoesItDeclineIt) {
  ASSERT_EQ(New(8, Sized(10, 10), PXL_Flag_NO_PLATFORM), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(World().depth, 8);
}

TEST_F(DeferredWorld, IsNotChangedByLocks) {
  ASSERT_EQ(New(32, Sized(10, 10)), PXL_Err_NONE);
  ForgetLog();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.lockCount, 0);
  EXPECT_EQ(World().pixels.baseAddr, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(World().pixels.lockCount, 0);
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, 0, nullptr, worldH_), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(recorder_.Count("K_PurgeLoop"), 0);
}

TEST_F(DeferredWorld, WithTooLongARowFreesNoFrameFromTheHeap) {
  EXPECT_EQ(New(32, Sized(32766, 1)), PXL_Err_REFUSED);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "K_ZLookupLStrCache(29, 0, 0)",
                                 "Kp_ReportError(0x70035, 8 error 0 \"row size too large "
                                 "(131072).\")",
                                 "HLock(handle1)", "free(null)", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(DeferredWorld, BeyondTheLimitFreesNoFrameFromThePool) {
  EXPECT_EQ(New(32, Sized(32765, 16384)), PXL_Err_NO_MEMORY);
  EXPECT_THAT(
      recorder_.LogOf({"HLock", "K_ReportError", "K_FreeRecycledPtr", "free", "K_FreeHandle"}),
      ElementsAre("HLock(handle1)", StartsWith("K_ReportError(0x70035, 8, "), "HLock(handle1)",
                  "K_FreeRecycledPtr(null)", "K_FreeHandle(handle1)"));
}

TEST_F(DeferredWorld, KeepsItsGeometryInTheCallersRecordThoughItFailed) {
  PXL_WorldHandle callersH = CallerHandle();
  const Rect rect = Sized(32765, 16384);
  EXPECT_EQ(PXL_NewWorld(nullptr, PXL_Flag_DEFERRED, &rect, 32, 0, callersH, nullptr),
            PXL_Err_NO_MEMORY);
  const PXL_World& world = Record(callersH);
  EXPECT_EQ(world.hasFrame, 1);
  EXPECT_EQ(world.pixels.frameSize, 2147483664U);
  EXPECT_EQ(world.pixels.rowBytes, 131072);
  EXPECT_EQ(world.depth, 32);
  EXPECT_EQ(world.width, 32765);
  EXPECT_EQ(world.headMark, 0U);
}

TEST_F(DeferredWorld, OfNegativeHeightHasAGeometryOfZeros) {
  PXL_WorldHandle callersH = CallerHandle();
  const Rect rect = Sized(10, -1);
  ForgetLog();
  EXPECT_EQ(PXL_NewWorld(nullptr, PXL_Flag_DEFERRED, &rect, 32, 0, callersH, nullptr),
            PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(callersH).hasFrame, 1);
  EXPECT_EQ(Record(callersH).pixels.frameSize, 0U);
  EXPECT_EQ(Record(callersH).pixels.rowBytes, 0);
  EXPECT_EQ(Record(callersH).depth, 32);
  EXPECT_EQ(Record(callersH).height, -1);
  EXPECT_EQ(recorder_.LogOf({"free"}), std::vector<std::string>{"free(null)"});
}

TEST_F(DeferredWorld, DisposedOfFreesNoFrame) {
  ASSERT_EQ(New(32, Sized(10, 10)), PXL_Err_NONE);
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH_), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(handle1)", "free(null)", "K_FreeHandle(handle1)"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(DeferredWorld, OfLargeSizeDisposedOfFreesNoPoolBlock) {
  ASSERT_EQ(New(128, Sized(1000, 1000)), PXL_Err_NONE);
  ForgetLog();
  EXPECT_EQ(PXL_DisposeWorld(worldH_), PXL_Err_NONE);
  EXPECT_THAT(Log(),
              ElementsAre("HLock(handle1)", "K_FreeRecycledPtr(null)", "K_FreeHandle(handle1)"));
}

TEST_F(MappedWorld, HasAFileOfItsFramesSize) {
  ASSERT_EQ(NewMapped(128, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "MemoryMappedFile()",
                                 R"(Init("zelk.ov.pxlmapfile.1", 1620, 101))",
                                 "K_AccountSystemAllocation(1620)", "HUnlock(handle1)"));
  EXPECT_NE(World().pixels.provider, nullptr);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(World().pixels.frameSize, 1620U);
  EXPECT_EQ(World().pixels.rowBytes, 160);
  EXPECT_EQ(World().hasFrame, 1);
  EXPECT_EQ(World().depth, 128);
}

TEST_F(MappedWorld, LivesThroughLocksToItsDisposal) {
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_NE(World().pixels.frame, nullptr);
  EXPECT_EQ(World().pixels.baseAddr, nullptr);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(Dispose(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "MemoryMappedFile()",
                                 R"(Init("zelk.ov.pxlmapfile.1", 496, 101))",
                                 "K_AccountSystemAllocation(496)", "HUnlock(handle1)",
                                 // lock
                                 "K_PurgeLoop(496, 1)", "GetAddress()",
                                 "K_AccountSystemAllocation(-496)", "K_AccountAllocation(496)",
                                 // unlock
                                 "K_AccountAllocation(-496)", "K_AccountSystemAllocation(496)",
                                 "UnmapMemory()", "CloseFileHandleIfPossible()",
                                 // lock
                                 "K_PurgeLoop(496, 1)", "GetAddress()",
                                 "K_AccountSystemAllocation(-496)", "K_AccountAllocation(496)",
                                 // unlock
                                 "K_AccountAllocation(-496)", "K_AccountSystemAllocation(496)",
                                 "UnmapMemory()", "CloseFileHandleIfPossible()",
                                 // disposal
                                 "HLock(handle1)", "K_AccountSystemAllocation(-496)", "Reset()",
                                 "~MemoryMappedFile()", "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(MappedWorld, DisposedOfWhileLockedLeavesItsBytesWithTheApplication) {
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Dispose(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"K_AccountAllocation", "K_AccountSystemAllocation", "UnmapMemory"}),
              ElementsAre("K_AccountSystemAllocation(496)", "K_AccountSystemAllocation(-496)",
                          "K_AccountAllocation(496)", "K_AccountSystemAllocation(-496)"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(MappedWorld, IsMappedByTheFirstLockAndUnmappedByTheLastUnlock) {
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("GetAddress"), 1);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(recorder_.Count("UnmapMemory"), 0);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(recorder_.Count("UnmapMemory"), 1);
}

TEST_F(MappedWorld, WithoutAFileFailsQuietlyAndLeavesNothing) {
  recorder_.Fail("Init");
  EXPECT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(2, 0, 0)",
                                 R"(K_AllocateHandleClear(0x70003, "graphics structure", 112))",
                                 "HLock(handle1)", "MemoryMappedFile()",
                                 R"(Init("zelk.ov.pxlmapfile.1", 496, 101))", "~MemoryMappedFile()",
                                 R"(K_TranslateAndReportException("no file"))", "HLock(handle1)",
                                 "K_FreeHandle(handle1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(MappedWorld, WithoutAFileLeavesNoProviderInTheCallersRecord) {
  recorder_.Fail("Init");
  PXL_WorldHandle callersH = CallerHandle();
  const Rect rect = Sized(10, 10);
  EXPECT_EQ(
      PXL_NewWorld(nullptr, PXL_Flag_DEFERRED | PXL_Flag_MAPPED, &rect, 32, 0, callersH, nullptr),
      PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(callersH).pixels.provider, nullptr);
  EXPECT_EQ(Record(callersH).hasFrame, 1);
  EXPECT_EQ(Record(callersH).pixels.frameSize, 496U);
  EXPECT_FALSE(recorder_.IsLocked(AsHandle(callersH)));
}

TEST_F(MappedWorld, WithoutMemoryForItsProviderFails) {
  recorder::FailNewOf(sizeof(PXL_PixelProvider));
  EXPECT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(worldH_, nullptr);
  EXPECT_EQ(recorder_.Count("MemoryMappedFile"), 0);
  EXPECT_EQ(recorder_.LogOf({"K_ReportError", "Kp_ReportError"}).size(), 0U);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(MappedWorld, WhoseGeometryFailsMakesNoFileAndReportsOnce) {
  EXPECT_EQ(NewMapped(32, Sized(32766, 1)), PXL_Err_REFUSED);
  EXPECT_EQ(recorder_.Count("Kp_ReportError"), 1);
  EXPECT_EQ(recorder_.Count("MemoryMappedFile"), 0);
  EXPECT_EQ(NewMapped(32, Sized(32765, 16384)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.Count("K_ReportError"), 1);
  EXPECT_EQ(recorder_.Count("MemoryMappedFile"), 0);
}

// A file that failed with the code 0 counts as made, but is not there.
TEST_F(MappedWorld, LivesWithoutItsFileWhenTheFailureHadNoCode) {
  recorder_.Throw("Init", [] { throw 0L; });
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_EQ(PXLp_G.worldCount, 1);
  ASSERT_NE(World().pixels.provider, nullptr);
  EXPECT_EQ(World().pixels.provider->context, nullptr);
  ForgetLog();
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NONE);
  EXPECT_EQ(World().pixels.frame, nullptr);
  EXPECT_EQ(World().pixels.lockCount, 1);
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NO_MEMORY);
  PXL_UnlockPixels(worldH_);
  EXPECT_EQ(World().pixels.lockCount, 2);
  EXPECT_EQ(Dispose(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("HLock(handle1)", "K_FreeHandle(handle1)"));
  EXPECT_EQ(PXLp_G.worldCount, 0);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

// The file was mapped by a late attempt of a lock that failed all the same.
TEST_F(MappedWorld, UnmapsAndBooksAfterALockThatFailedWithAMapping) {
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  ForgetLog();
  recorder_.Fail("GetAddress");
  EXPECT_EQ(PXL_LockPixels(0, worldH_, nullptr), PXL_Err_NO_MEMORY);
  EXPECT_EQ(World().pixels.lockCount, 1);
  EXPECT_NE(World().pixels.frame, nullptr);
  EXPECT_EQ(recorder_.Count("K_AccountAllocation"), 0);
  ForgetLog();
  PXL_UnlockPixels(worldH_);
  EXPECT_THAT(Log(), ElementsAre("K_AccountAllocation(-496)", "K_AccountSystemAllocation(496)",
                                 "UnmapMemory()", "CloseFileHandleIfPossible()"));
  EXPECT_EQ(World().pixels.lockCount, 0);
  EXPECT_EQ(World().pixels.frame, nullptr);
}

TEST_F(MappedWorld, TakesTheNextNameAlsoAfterAnotherBirth) {
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  PXL_Death();
  PXL_Birth(0);
  Dispose();
  ASSERT_EQ(NewMapped(32, Sized(10, 10)), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"Init"}), ElementsAre(R"(Init("zelk.ov.pxlmapfile.2", 496, 101))"));
}
