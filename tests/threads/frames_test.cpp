// Frames come and go on all threads once the first call has returned.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "K_host.h"
#include "PXL.h"
#include "tests/support/host/crew.h"
#include "tests/support/host/leak_check.h"

namespace {

constexpr std::uint64_t kPoolThreshold = 300 * 1024;
constexpr int kRounds = 300;

enum class Kept { Yes, No, NoMemory };

// Marks both ends of a frame, and looks whether the marks stay.
Kept KeepsItsMarks(std::uint64_t size, int mark) {
  void* frame = nullptr;
  if (PXL_AllocateFrameQuiet(size, 0, &frame) != PXL_Err_NONE) return Kept::NoMemory;
  auto* bytes = static_cast<char*>(frame);
  std::memset(bytes, mark, 16);
  std::memset(bytes + size - 16, mark, 16);
  std::this_thread::yield();
  bool kept = true;
  for (std::uint64_t i = 0; i < 16; ++i) {
    kept = kept && bytes[i] == static_cast<char>(mark) &&
           bytes[size - 1 - i] == static_cast<char>(mark);
  }
  PXL_FreeFrame(frame, size);
  return kept ? Kept::Yes : Kept::No;
}

// Frames on both sides of the threshold; returns how many were refused.
int UseFrames(int member) {
  std::mt19937 random(static_cast<unsigned>(member));
  int refused = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::uint64_t size = 16 + random() % (2 * kPoolThreshold);
    const Kept kept = KeepsItsMarks(size, 16 * member + round % 16);
    EXPECT_NE(kept, Kept::No);
    refused += kept == Kept::NoMemory ? 1 : 0;
  }
  return refused;
}

// The settings are read.
void MakeTheFirstCall() {
  void* frame = nullptr;
  ASSERT_EQ(PXL_AllocateFrameQuiet(16, 0, &frame), PXL_Err_NONE);
  PXL_FreeFrame(frame, 16);
}

}  // namespace

TEST(Frames, AreHadOnAllThreadsAtOnce) {
  MakeTheFirstCall();
  RunCrew([](int member) { EXPECT_EQ(UseFrames(member), 0); });
  EXPECT_EQ(CurrentHoldings().poolBlocks, 0U);
}

TEST(Frames, AreHadWhileThePoolIsEmptiedAndMemoryIsShort) {
  MakeTheFirstCall();
  unsigned turns = 0;
  {
    const Meddler pressure([&](unsigned n) {
      K_SetPoolLimit(n % 2 == 0 ? 0 : K_DefaultPoolLimit);
      K_SetMemoryBudget(n % 3 == 0 ? 2 * kPoolThreshold : 0);
      turns = n + 1;
    });
    RunCrew([](int member) { UseFrames(member); });
  }
  K_SetPoolLimit(K_DefaultPoolLimit);
  K_SetMemoryBudget(0);
  EXPECT_GT(turns, 0U);
  EXPECT_EQ(CurrentHoldings().poolBlocks, 0U);
}
