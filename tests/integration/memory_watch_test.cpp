// The host's ways to watch the memory of Worlds.
#include <algorithm>
#include <vector>

#include "tests/support/host/whole.h"

using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

constexpr std::uint64_t kFrameBytes = std::uint64_t{30720} * 1080 + 20;

class WatchedMemory : public Whole {
 protected:
  WatchedMemory() { K_SetPoolLimit(0); }
  ~WatchedMemory() override {
    K_SetTimeLine(0);
    K_SetPoolChecks(0);
    K_SetPoolLimit(K_DefaultPoolLimit);
  }

  void ClearAndBlit(std::int32_t from, std::int32_t to, int width) {
    PXL_WorldHandle source = Make(from, width, 301, PXL_Flag_CLEAR);
    PXL_WorldHandle destination = Make(to, width, 301);
    EXPECT_EQ(PXL_ClearWorldToLong(source, 0), PXL_Err_NONE);
    {
      const Locked first(source);
      const Locked second(destination);
      EXPECT_EQ(PXL_Blit(source, destination, nullptr, nullptr, 0), PXL_Err_NONE);
    }
    Dispose(destination);
    Dispose(source);
  }

  static std::vector<K_TimeLineSample> TimeLine() {
    std::vector<K_TimeLineSample> samples(K_MostTimeLineSamples);
    samples.resize(K_ReadTimeLine(samples.data(), samples.size()));
    return samples;
  }
};

TEST_F(WatchedMemory, ShowsTheLifeOfAWorldOnTheTimeLine) {
  K_SetTimeLine(1);
  Dispose(Make(128, 1920, 1080));
  std::uint64_t most = 0;
  for (const K_TimeLineSample& sample : TimeLine()) most = std::max(most, sample.liveBytes);
  EXPECT_GE(most, kFrameBytes);
  EXPECT_LE(most, kFrameBytes + kFrameBytes / 8);
  EXPECT_EQ(TimeLine().back().liveBytes, 0U);
  EXPECT_EQ(TimeLine().back().failures, 0U);
}

TEST_F(WatchedMemory, ShowsTriesAndPurgesOfAWorldThatFindsNoRoom) {
  K_SetPoolLimit(K_DefaultPoolLimit);
  K_SetMemoryBudget(40 << 20);
  Dispose(Make(128, 1024, 1024));
  K_SetTimeLine(1);
  EXPECT_EQ(FailToMake(128, 2048, 2048), PXL_Err_NO_MEMORY);
  const K_TimeLineSample last = TimeLine().back();
  // One try before the kept block is freed, one after.
  EXPECT_EQ(last.failures, 2U);
  EXPECT_EQ(last.purges, 2U);
  EXPECT_EQ(last.keptBytes, 0U);
}

TEST_F(WatchedMemory, TellsOfAWriteBeyondTheFrameOfAWorld) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  PXL_WorldHandle worldH = Make(128, 1920, 1080, PXL_Flag_CLEAR);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, -1), PXL_Err_NONE);
  auto* frame = static_cast<char*>(Record(worldH).pixels.frame);
  EXPECT_THAT(Reports(), IsEmpty());
  frame[kFrameBytes] = 1;
  Dispose(worldH);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, std::uint32_t{K_Code_GUARD});
  EXPECT_THAT(Reports()[0].text, HasSubstr("PXL WORLD (33177620 bytes, owner 0x70003) was written "
                                           "past its end: byte 33177620"));
}

TEST_F(WatchedMemory, FindsNothingAmissInTheModulesOwnWork) {
  K_SetPoolLimit(K_DefaultPoolLimit);
  K_SetPoolChecks(K_PoolCheck_GUARDS | K_PoolCheck_FENCES | K_PoolCheck_FILL);
  constexpr std::int32_t kPairs[][2] = {{128, 128}, {128, 32}, {64, 64}, {64, 32},
                                        {32, 64},   {32, 128}, {32, 32}};
  for (int width = 320; width < 340; ++width) {
    for (const auto& [from, to] : kPairs) ClearAndBlit(from, to, width);
  }
  EXPECT_THAT(Reports(), IsEmpty());
}

}  // namespace
