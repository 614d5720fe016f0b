// Memory pressure from another thread.
#include <atomic>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/drawing/surfaces.h"

namespace {

using Pressure = Surfaces;

// Presses from a thread of its own for as long as it lives.
class Presser {
 public:
  Presser() = default;
  ~Presser() {
    done_ = true;
    thread_.join();
  }
  Presser(const Presser&) = delete;
  Presser& operator=(const Presser&) = delete;

 private:
  std::atomic<bool> done_ = false;
  std::thread thread_{[this] {
    while (!done_) K_PurgeHandlesAndCompact();
  }};
};

// Every lock that succeeds holds the pixels, whenever the pressure comes.
TEST_F(Pressure, FromAnotherThreadTakesUnlockedPixelsOnly) {
  GWorldPtr kept = Make(8, Sized(64, 64));
  GWorldPtr world = Make(8, Sized(64, 64), QDE_Flag_PIX_PURGE);
  Fill(kept, 0x5A);
  std::optional<Presser> presser(std::in_place);
  const Rect rect = Sized(64, 64);
  int locks = 0;
  for (int round = 0; round < 2000; ++round) {
    CopyBits(GetPortBitMapForCopyBits(kept), GetPortBitMapForCopyBits(world), &rect, &rect, 0,
             nullptr);
    ASSERT_TRUE(QDE_Error() == 0 || QDE_Error() == QDE_Err_PURGED);
    if (LockPixels(GetPortPixMap(world)) == 0) {
      const Rect bounds = Sized(64, 63 + round % 2);
      const std::uint32_t result = Update(&world, 8, bounds, QDE_Flag_STRETCH_PIX);
      ASSERT_EQ(result & kFailedBit, 0U);
      continue;
    }
    ++locks;
    Fill(world, static_cast<std::uint8_t>(round));
    ASSERT_EQ(Bytes(world),
              std::vector<std::uint8_t>(Size(world), static_cast<std::uint8_t>(round)));
    UnlockPixels(GetPortPixMap(world));
    const std::uint32_t result = Update(&world, 8, Sized(64, 63 + round % 2), QDE_Flag_STRETCH_PIX);
    ASSERT_EQ(result & kFailedBit, 0U);
  }
  presser.reset();
  EXPECT_GT(locks, 0);
  EXPECT_EQ(LockPixels(GetPortPixMap(kept)), 1);
  EXPECT_EQ(Bytes(kept), std::vector<std::uint8_t>(Size(kept), 0x5A));
  DisposeGWorld(world);
  DisposeGWorld(kept);
}

}  // namespace
