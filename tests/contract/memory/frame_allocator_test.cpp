// Allocation and release of frames.
#include "memory/frame_allocator.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "memory/frame_settings.h"
#include "memory/frame_settings_reset.h"
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr std::uint64_t kLargestHeapFrame = 307200;

}  // namespace

class FrameAllocator : public Contract {
 protected:
  // Past the reading of the settings.
  void LoadSettings() {
    PXLp_LoadFrameSettings();
    ForgetLog();
  }
  std::int32_t Allocate(std::uint64_t size, std::uint64_t reserved = 0) {
    return PXL_AllocateFrameQuiet(size, reserved, &frame_);
  }

  int rubbish_ = 0;
  void* frame_ = &rubbish_;
};

TEST_F(FrameAllocator, ReadsTheSettingsFirst) {
  EXPECT_EQ(Allocate(64), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("Instance()", R"(GetEntry("VirtualAllocFrames", "true"))",
                                 "Instance()", R"(GetEntry("VirtualAllocMinSizeInK3", "300"))",
                                 "K_PurgeLoop(64, 1)", "malloc(64)"));
}

TEST_F(FrameAllocator, ReadsTheSettingsOnceForAllBirths) {
  Allocate(64);
  PXL_FreeFrame(frame_, 64);
  PXL_Birth(0);
  PXL_Death();
  PXL_Birth(0);
  recorder_.script.settings["VirtualAllocFrames"] = "false";
  ForgetLog();
  Allocate(kLargestHeapFrame + 1);
  EXPECT_EQ(recorder_.Count("GetEntry"), 0);
  EXPECT_EQ(recorder_.Count("K_AllocateRecycledPtr"), 1);
}

TEST_F(FrameAllocator, TakesFramesUpToTheThresholdFromTheHeap) {
  LoadSettings();
  EXPECT_EQ(Allocate(kLargestHeapFrame), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(frame_), "heap1");
  EXPECT_EQ(PXL_FreeFrame(frame_, kLargestHeapFrame), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(307200, 1)", "malloc(307200)", "free(heap1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(FrameAllocator, TakesLargerFramesFromThePool) {
  LoadSettings();
  EXPECT_EQ(Allocate(kLargestHeapFrame + 1), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(frame_), "pool1");
  EXPECT_EQ(PXL_FreeFrame(frame_, kLargestHeapFrame + 1), PXL_Err_NONE);
  EXPECT_THAT(Log(),
              ElementsAre("K_PurgeLoop(307201, 1)",
                          R"(K_AllocateRecycledPtr(0x70003, "PXL WORLD", 307201))",
                          "K_GetRecycledPtrBaseAddress(ref of pool1)", "K_FreeRecycledPtr(pool1)"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(FrameAllocator, GivesMemoryAsItComes) {
  for (const std::uint64_t size : {kLargestHeapFrame, kLargestHeapFrame + 1}) {
    Allocate(size, 1);
    const auto* bytes = static_cast<const unsigned char*>(frame_);
    EXPECT_TRUE(std::all_of(bytes, bytes + size, [](unsigned char b) { return b == 0xA5; }));
    PXL_FreeFrame(frame_, size);
  }
}

TEST_F(FrameAllocator, IgnoresItsReservedArgument) {
  LoadSettings();
  Allocate(64, 0xFFFFFFFFFFFFFFFF);
  PXL_FreeFrame(frame_, 64);
  const std::vector<std::string> with = Log();
  ForgetLog();
  Allocate(64, 0);
  PXL_FreeFrame(frame_, 64);
  EXPECT_EQ(with.size(), Log().size());
  EXPECT_EQ(with[0], Log()[0]);
  EXPECT_EQ(with[1], Log()[1]);
}

TEST_F(FrameAllocator, TakesAllFromTheHeapWithThePoolOff) {
  recorder_.script.settings["VirtualAllocFrames"] = "false";
  Allocate(1 << 20);
  EXPECT_EQ(recorder_.NameOf(frame_), "heap1");
  PXL_FreeFrame(frame_, 1 << 20);
  EXPECT_EQ(Log().back(), "free(heap1)");
}

TEST_F(FrameAllocator, TakesAllButNothingFromThePoolWithAThresholdOfZero) {
  recorder_.script.settings["VirtualAllocMinSizeInK3"] = "abc";
  Allocate(1);
  EXPECT_EQ(recorder_.NameOf(frame_), "pool1");
  PXL_FreeFrame(frame_, 1);
  Allocate(0);
  EXPECT_EQ(recorder_.Count("malloc"), 1);
  PXL_FreeFrame(frame_, 0);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(FrameAllocator, GivesNoFrameQuietlyWhenTheHeapIsExhausted) {
  LoadSettings();
  recorder_.FailAlways("malloc");
  EXPECT_EQ(Allocate(64), PXL_Err_NO_MEMORY);
  EXPECT_EQ(frame_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(64, 1)", "malloc(64)", "malloc(64)"));
}

TEST_F(FrameAllocator, AsksForTheAddressOfAPoolBlockThatItDidNotGet) {
  LoadSettings();
  recorder_.FailAlways("K_AllocateRecycledPtr");
  recorder_.script.purgeRounds = 0;
  EXPECT_EQ(Allocate(400000), PXL_Err_NO_MEMORY);
  EXPECT_EQ(frame_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(400000, 1)",
                                 R"(K_AllocateRecycledPtr(0x70003, "PXL WORLD", 400000))",
                                 "K_GetRecycledPtrBaseAddress(null)"));
}

TEST_F(FrameAllocator, SucceedsWhenPurgingHelps) {
  LoadSettings();
  recorder_.Fail("malloc");
  EXPECT_EQ(Allocate(64), PXL_Err_NONE);
  EXPECT_NE(frame_, nullptr);
  EXPECT_EQ(recorder_.Count("malloc"), 2);
}

TEST_F(FrameAllocator, FailsWithoutAFrameWhateverTheLoopSays) {
  for (const std::int32_t code : {0, 9, -108}) {
    recorder_.script.purgeLoop = [code](std::uint64_t, K_PurgeAttempt, void*) { return code; };
    frame_ = &rubbish_;
    EXPECT_EQ(Allocate(64), PXL_Err_NO_MEMORY);
    EXPECT_EQ(frame_, nullptr);
  }
}

TEST_F(FrameAllocator, HandsAFrameOutTogetherWithTheLoopsCode) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    EXPECT_EQ(attempt(context, &done), PXL_Err_NONE);
    EXPECT_EQ(done, 1);
    return 9;
  };
  EXPECT_EQ(Allocate(64), 9);
  EXPECT_EQ(recorder_.NameOf(frame_), "heap1");
}

TEST_F(FrameAllocator, ForgetsTheFrameOfAnEarlierAttempt) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 9;
    recorder::Current().Fail("malloc");
    EXPECT_EQ(attempt(context, &done), PXL_Err_NONE);
    EXPECT_EQ(done, 0);
    return 0;
  };
  EXPECT_EQ(Allocate(64), PXL_Err_NO_MEMORY);
}

// The loop can read the size and the address of the request.
TEST_F(FrameAllocator, ShowsTheLoopSizeAndAddress) {
  recorder_.script.purgeLoop = [this](std::uint64_t size, K_PurgeAttempt attempt, void* context) {
    struct {
      std::uint64_t size;
      void* address;
    } request{};
    EXPECT_EQ(size, 64U);
    std::memcpy(&request, context, sizeof request);
    EXPECT_EQ(request.size, 64U);
    EXPECT_EQ(request.address, nullptr);
    std::uint8_t done = 0;
    attempt(context, &done);
    std::memcpy(&request, context, sizeof request);
    EXPECT_EQ(recorder_.NameOf(request.address), "heap1");
    return 0;
  };
  EXPECT_EQ(Allocate(64), PXL_Err_NONE);
}

TEST_F(FrameAllocator, LooksAtTheSettingsInEveryAttempt) {
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    recorder::Current().Fail("K_AllocateRecycledPtr");
    attempt(context, &done);
    PXLp_AccessFrameSettings().poolEnabled = false;
    attempt(context, &done);
    return 0;
  };
  EXPECT_EQ(Allocate(400000), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(frame_), "heap1");
}

TEST_F(FrameAllocator, LetsAFailureOfTheSettingsPassOut) {
  recorder_.Throw("GetEntry", [] { throw std::runtime_error("no database"); });
  EXPECT_THROW(Allocate(400000), std::runtime_error);
  EXPECT_EQ(frame_, &rubbish_);
  EXPECT_EQ(recorder_.Count("K_PurgeLoop"), 0);
  EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"), 0);

  ForgetLog();
  EXPECT_EQ(Allocate(400000), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("GetEntry"), 0);
  EXPECT_EQ(recorder_.NameOf(frame_), "pool1");
}

TEST_F(FrameAllocator, LetsAnyKindOfFailureOfTheSettingsPassOut) {
  recorder_.Throw("Instance", [] { throw 12L; });
  EXPECT_THROW(Allocate(64), long);
  EXPECT_EQ(Allocate(64), PXL_Err_NONE);
}

TEST_F(FrameAllocator, FreesWithoutReadingTheSettings) {
  recorder_.script.settings["VirtualAllocFrames"] = "false";
  EXPECT_EQ(PXL_FreeFrame(nullptr, kLargestHeapFrame + 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_FreeRecycledPtr(null)"));
  EXPECT_FALSE(PXLp_AccessFrameSettings().loaded);
}

TEST_F(FrameAllocator, PassesNoFrameOnToTheKindOfMemoryItsSizeNames) {
  EXPECT_EQ(PXL_FreeFrame(nullptr, kLargestHeapFrame), PXL_Err_NONE);
  EXPECT_EQ(PXL_FreeFrame(nullptr, kLargestHeapFrame + 1), PXL_Err_NONE);
  EXPECT_EQ(PXL_FreeFrame(nullptr, 0), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("free(null)", "K_FreeRecycledPtr(null)", "free(null)"));
}

TEST_F(FrameAllocator, WorksTheSameForTheModuleItself) {
  LoadSettings();
  void* frame = nullptr;
  EXPECT_EQ(PXLp_AcquireFrame(64, &frame), PXL_Err_NONE);
  PXLp_ReleaseFrame(frame, 64);
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(64, 1)", "malloc(64)", "free(heap1)"));
}
