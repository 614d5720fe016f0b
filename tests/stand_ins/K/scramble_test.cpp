// Tests of scrambling: which blocks move, and when.
#include <atomic>
#include <cstring>
#include <string>
#include <thread>

#include "tests/stand_ins/K/memory_fixture.h"
#include "tests/support/system/sanitizers.h"

namespace {

// One unlocked and one locked handle, with content, and scrambling on.
class Scramble : public MemoryTest {
 protected:
  Scramble() {
    std::memcpy(*moving_, "moving", 7);
    std::memcpy(*locked_, "locked", 7);
    K_LockHandle(locked_);
    K_SetScramble(1);
  }
  ~Scramble() override {
    K_FreeHandle(moving_);
    K_FreeHandle(locked_);
  }

  // Whether the call moved the unlocked block, and only that one.
  template <typename Call>
  bool Moves(Call call) {
    const Ptr movingBefore = *moving_;
    const Ptr lockedBefore = *locked_;
    call();
    EXPECT_EQ(*locked_, lockedBefore);
    EXPECT_STREQ(*moving_, "moving");
    EXPECT_STREQ(*locked_, "locked");
    EXPECT_EQ(K_GetHandleSize(moving_), 7U);
    return *moving_ != movingBefore;
  }

  Handle moving_ = NewHandle(7);
  Handle locked_ = NewHandle(7);
};

void AllocateAndFree() {
  K_FreeHandle(K_AllocateHandleClear(0x70003, "thing", 100));
}

TEST_F(Scramble, MovesUnlockedBlocksInEachAllocatingCall) {
  EXPECT_TRUE(Moves(AllocateAndFree));
  EXPECT_TRUE(Moves([] { K_FreeHandle(K_NewEmptyHandle()); }));
  EXPECT_TRUE(Moves(K_PurgeHandlesAndCompact));
  EXPECT_TRUE(Moves(K_MoveUnlockedHandles));
}

// Another thread moves all unlocked blocks meanwhile: a locked block stays at the
// address in its master pointer, with its content, until it is unlocked.
TEST_F(Scramble, LocksHoldAgainstMovesOnOtherThreads) {
  constexpr int kMoves = 10;
  constexpr std::size_t kSize = 1 << 16;
  std::atomic<int> atWork = 2;
  std::atomic<int> lost = 0;
  const auto work = [&atWork, &lost] {
    const Handle handle = NewHandle(kSize);
    Ptr before = nullptr;
    for (int moves = 0; moves < kMoves;) {
      K_LockHandle(handle);
      const Ptr place = *handle;
      if (place != before) ++moves;
      before = place;
      std::memset(place, moves & 0x7F, kSize);
      if (*handle != place || place[kSize - 1] != (moves & 0x7F)) ++lost;
      K_UnlockHandle(handle);
    }
    K_FreeHandle(handle);
    --atWork;
  };
  std::thread first(work);
  std::thread second(work);
  while (atWork > 0) K_MoveUnlockedHandles();
  first.join();
  second.join();
  EXPECT_EQ(lost, 0);
}

TEST_F(Scramble, MovesNothingInOtherCalls) {
  EXPECT_FALSE(Moves([] { K_FreeRecycledPtr(NewBlock(1 << 20)); }));
  EXPECT_FALSE(Moves([] { K_FreeHandle(K_NewHandle(1)); }));
  EXPECT_FALSE(Moves([this] { K_UnlockHandle(moving_); }));
  EXPECT_FALSE(Moves([] { K_AccountAllocation(0); }));
}

TEST_F(Scramble, MovesNothingInThePurgeLoop) {
  EXPECT_FALSE(Moves([] {
    const auto fail = [](void*, std::uint8_t*) { return std::int32_t{0}; };
    EXPECT_EQ(K_PurgeLoop(1, fail, nullptr, 1), 4);
  }));
}

TEST_F(Scramble, MovesOnlyWhenCompactingWhileOff) {
  K_SetScramble(0);
  EXPECT_FALSE(Moves(AllocateAndFree));
  EXPECT_FALSE(Moves([] { K_FreeHandle(K_NewEmptyHandle()); }));
  EXPECT_FALSE(Moves(K_MoveUnlockedHandles));
  EXPECT_TRUE(Moves(K_PurgeHandlesAndCompact));
}

TEST_F(Scramble, MovesAgainAfterTheUnlock) {
  K_LockHandle(locked_);
  K_UnlockHandle(locked_);
  const Ptr before = *locked_;
  AllocateAndFree();
  EXPECT_NE(*locked_, before);
  EXPECT_STREQ(*locked_, "locked");
}

TEST_F(Scramble, LeavesThePatternInTheOldPlace) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the look at it";
  const char* stale = *moving_;
  AllocateAndFree();
  EXPECT_EQ(std::string(stale, 7), std::string(7, static_cast<char>(K_ScramblePattern)));
}

TEST_F(Scramble, LeavesThePatternWhereAFreedBlockWas) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the look at it";
  const Handle handle = NewHandle(7);
  const char* stale = *handle;
  K_FreeHandle(handle);
  EXPECT_EQ(std::string(stale, 7), std::string(7, static_cast<char>(K_ScramblePattern)));
}

using ScrambleDeathTest = Scramble;

TEST_F(ScrambleDeathTest, LetsTheCheckerCatchAStaleLook) {
  if (!kAddressSanitizer) GTEST_SKIP() << "needs AddressSanitizer";
  const volatile char* stale = *moving_;
  AllocateAndFree();
  EXPECT_DEATH(static_cast<void>(*stale), "use-after-poison");
}

TEST_F(Scramble, KeepsOldPlacesWithinBounds) {
  constexpr std::uint64_t kLarge = 20 << 20;
  const Handle large = NewHandle(kLarge);
  std::memset(*large, 1, kLarge);
  for (int i = 0; i < 50; ++i) AllocateAndFree();
  EXPECT_EQ((*large)[kLarge - 1], 1);
  K_FreeHandle(large);
}

}  // namespace
