// Frames come and go on all threads once the first call has returned.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "K_host.h"
#include "PXL.h"
#include "tests/support/host/crew.h"

namespace {

constexpr std::uint64_t POOL_THRESHOLD = 300 * 1024;
constexpr int ROUNDS = 300;

enum class Kept { Yes, No, NoMemory };

// Marks both ends of a frame, and looks whether the marks stay.
Kept KeepsItsMarks(std::uint64_t size, int mark) {
  void* frame = nullptr;
  if (PXL_AllocateFrameQuiet(size, 0, &frame) != 0) return Kept::NoMemory;
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

// Frames on both sides of the threshold; gives how many there was no memory for.
int UseFrames(int member) {
  std::mt19937 random(static_cast<unsigned>(member));
  int refused = 0;
  for (int round = 0; round < ROUNDS; ++round) {
    const std::uint64_t size = 16 + random() % (2 * POOL_THRESHOLD);
    const Kept kept = KeepsItsMarks(size, 16 * member + round % 16);
    EXPECT_NE(kept, Kept::No);
    refused += kept == Kept::NoMemory ? 1 : 0;
  }
  return refused;
}

// The settings are read.
void MakeTheFirstCall() {
  void* frame = nullptr;
  ASSERT_EQ(PXL_AllocateFrameQuiet(16, 0, &frame), 0);
  PXL_FreeFrame(frame, 16);
}

std::uint64_t LivePoolBlocks() {
  K_PoolStatistics statistics;
  K_GetPoolStatistics(&statistics);
  return statistics.liveBlocks;
}

}  // namespace

TEST(Frames, AreHadOnAllThreadsAtOnce) {
  MakeTheFirstCall();
  RunCrew([](int member) { EXPECT_EQ(UseFrames(member), 0); });
  EXPECT_EQ(LivePoolBlocks(), 0U);
}

TEST(Frames, AreHadWhileThePoolIsEmptiedAndMemoryIsShort) {
  MakeTheFirstCall();
  unsigned turns = 0;
  {
    const Meddler pressure([&](unsigned n) {
      K_SetPoolLimit(n % 2 == 0 ? 0 : K_DefaultPoolLimit);
      K_SetMemoryBudget(n % 3 == 0 ? 2 * POOL_THRESHOLD : 0);
      turns = n + 1;
    });
    RunCrew([](int member) { UseFrames(member); });
  }
  K_SetPoolLimit(K_DefaultPoolLimit);
  K_SetMemoryBudget(0);
  EXPECT_GT(turns, 0U);
  EXPECT_EQ(LivePoolBlocks(), 0U);
}
