// Each thread works on Worlds of its own, made before, with their records locked
// so that they stay where they are while others make and dispose.
#include <algorithm>
#include <array>
#include <cstring>

#include "tests/support/host/crew.h"
#include "tests/support/host/whole.h"

namespace {

constexpr int kWidth = 93;
constexpr int kHeight = 41;
constexpr std::uint32_t kMapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

Handle RecordBlock(PXL_WorldHandle worldH) {
  return reinterpret_cast<Handle>(worldH);
}

bool IsFilledWith(PXL_WorldHandle worldH, std::uint32_t word) {
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      if (PixelAt<std::uint32_t>(worldH, x, y) != word) return false;
    }
  }
  return true;
}

// The Worlds of one member of the crew.
struct Own {
  PXL_WorldHandle source, deep, back, mapped;
};

// Eight bits through a deeper World and back, in place of real work.
void TakeAround(const Own& own, std::uint32_t word) {
  const Locked source(own.source);
  const Locked deep(own.deep);
  const Locked back(own.back);
  EXPECT_EQ(PXL_ClearWorldToLong(own.source, static_cast<std::int32_t>(word)), PXL_Err_NONE);
  EXPECT_EQ(PXL_ClearWorldToZeros(own.back), PXL_Err_NONE);
  EXPECT_EQ(PXL_Blit(own.source, own.deep, nullptr, nullptr, 0), PXL_Err_NONE);
  EXPECT_EQ(PXL_Blit(own.deep, own.back, nullptr, nullptr, 0), PXL_Err_NONE);
  EXPECT_TRUE(IsFilledWith(own.back, word));
}

// Both orders, and back to the first.
void TurnOrder(PXL_WorldHandle worldH, std::uint32_t word) {
  const Locked locked(worldH);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, static_cast<std::int32_t>(word)), PXL_Err_NONE);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, PXL_ChannelOrder_ALTERNATE), PXL_Err_NONE);
  std::uint32_t order = PXL_ChannelOrder_STANDARD;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(order, std::uint32_t{PXL_ChannelOrder_ALTERNATE});
  EXPECT_TRUE(IsFilledWith(worldH, __builtin_bswap32(word)));
  EXPECT_EQ(PXL_SetChannelOrder(worldH, PXL_ChannelOrder_STANDARD), PXL_Err_NONE);
  EXPECT_TRUE(IsFilledWith(worldH, word));
}

// Pixels that are written while the file is mapped stay when it is mapped again.
void WriteMapped(PXL_WorldHandle worldH, std::uint32_t word) {
  {
    const Locked locked(worldH);
    EXPECT_EQ(PXL_ClearWorldToLong(worldH, static_cast<std::int32_t>(word)), PXL_Err_NONE);
  }
  const Locked locked(worldH);
  EXPECT_TRUE(IsFilledWith(worldH, word));
}

void Work(const Own& own, int member, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    const auto word = static_cast<std::uint32_t>(round * kCrew + member) * 0x01030507U;
    TakeAround(own, word);
    TurnOrder(own.source, word);
    WriteMapped(own.mapped, word);
  }
}

}  // namespace

class ThreadedWorlds : public Whole {
 protected:
  ThreadedWorlds() {
    for (int member = 0; member < kCrew; ++member) {
      const std::int32_t deep = member % 2 == 0 ? PXL_Depth_64 : PXL_Depth_128;
      own_[static_cast<std::size_t>(member)] = {MakeStill(32, 0), MakeStill(deep, 0),
                                                MakeStill(32, 0), MakeStill(32, kMapped)};
    }
  }

  ~ThreadedWorlds() override {
    for (const Own& own : own_) {
      for (PXL_WorldHandle worldH : {own.source, own.deep, own.back, own.mapped}) {
        K_UnlockHandle(RecordBlock(worldH));
        Dispose(worldH);
      }
    }
  }

  PXL_WorldHandle MakeStill(std::int32_t depth, std::uint32_t flags) {
    PXL_WorldHandle worldH = Make(depth, kWidth, kHeight, flags);
    K_LockHandle(RecordBlock(worldH));
    return worldH;
  }

  const Own& OwnOf(int member) const { return own_[static_cast<std::size_t>(member)]; }

  // Everything that hosts do one after the other, on one thread.
  void Administer(int round) {
    PXL_WorldHandle frame = Make(64, 20 + round % 50, 30);
    PXL_WorldHandle surface = MakeSurface(32, 30, 20);
    PXL_WorldHandle other = MakeSurface(32, 30, 20);
    PXL_WorldHandle mapped = Make(128, 30, 20, kMapped);
    const Rect bounds = {0, 0, 300, 400};
    EXPECT_EQ(PXL_UpdateWorld(0, &bounds, 0, nullptr, frame), PXL_Err_NONE);
    EXPECT_EQ(PXL_UpdateWorld(0, &bounds, 0, nullptr, surface), PXL_Err_NONE);
    EXPECT_EQ(PXL_Blit(other, surface, nullptr, nullptr, 8), PXL_Err_NONE);
    EXPECT_NE(FailToMake(64, -1, 5), PXL_Err_NONE);
    for (PXL_WorldHandle worldH : {mapped, other, surface, frame}) Dispose(worldH);
  }

 private:
  std::array<Own, kCrew> own_{};
};

TEST_F(ThreadedWorlds, AreWorkedOnAtOnce) {
  RunCrew([&](int member) { Work(OwnOf(member), member, 100); });
}

TEST_F(ThreadedWorlds, AreWorkedOnWhileOthersAreMadeReSizedDrawnAndDisposedOf) {
  int rounds = 0;
  {
    const Meddler administration([&](unsigned) { Administer(rounds++); });
    RunCrew([&](int member) { Work(OwnOf(member), member, 100); });
  }
  EXPECT_GT(rounds, 0);
}

TEST_F(ThreadedWorlds, MayBeBlittedFromByAllAtOnce) {
  PXL_WorldHandle source = MakeStill(128, 0);
  {
    const Locked locked(source);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        PixelAt<PXL_PixelF>(source, x, y) = {{1.0F, 0.5F, 0.25F, 0.0F}};
      }
    }
    RunCrew([&](int member) {
      const Own& own = OwnOf(member);
      const Locked back(own.back);
      for (int round = 0; round < 100; ++round) {
        PXL_ClearWorldToZeros(own.back);
        EXPECT_EQ(PXL_Blit(source, own.back, nullptr, nullptr, 0), PXL_Err_NONE);
        EXPECT_TRUE(IsFilledWith(own.back, 0x003F7FFFU));
      }
    });
  }
  K_UnlockHandle(RecordBlock(source));
  Dispose(source);
}

TEST_F(ThreadedWorlds, ReportWhatGoesWrongWhereverItDoes) {
  PXL_WorldHandle larger = MakeStill(64, 0);
  const Rect bounds = {0, 0, kHeight + 1, kWidth};
  ASSERT_EQ(PXL_UpdateWorld(0, &bounds, 0, nullptr, larger), PXL_Err_NONE);
  constexpr int kRounds = 50;
  int administered = 0;
  {
    const Locked locked(larger);
    const Meddler administration([&](unsigned) { Administer(administered++); });
    RunCrew([&](int member) {
      const Locked back(OwnOf(member).back);
      for (int round = 0; round < kRounds; ++round) {
        EXPECT_EQ(PXL_Blit(larger, OwnOf(member).back, nullptr, nullptr, 0), PXL_Err_REFUSED);
      }
    });
  }
  const auto refusals =
      std::count_if(Reports().begin(), Reports().end(), [](const KeptReport& report) {
        return report.text.find("must be same sized") != std::string::npos;
      });
  EXPECT_EQ(refusals, kCrew * kRounds);
  K_UnlockHandle(RecordBlock(larger));
  Dispose(larger);
}
