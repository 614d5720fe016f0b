// Tests of the time line.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <numeric>
#include <thread>
#include <vector>

#include "tests/stand_ins/K/memory_fixture.h"

using testing::ElementsAre;

namespace {

constexpr std::uint64_t kMiB = 1 << 20;

using Samples = std::vector<K_TimeLineSample>;

Samples Read(std::uint64_t capacity = K_MostTimeLineSamples) {
  Samples samples(capacity);
  samples.resize(K_ReadTimeLine(samples.data(), capacity));
  return samples;
}

template <typename Value>
using Member = Value K_TimeLineSample::*;

template <typename Value>
std::vector<Value> Each(const Samples& samples, Member<Value> member) {
  std::vector<Value> values;
  for (const K_TimeLineSample& sample : samples) values.push_back(sample.*member);
  return values;
}

void BookOften(int times) {
  for (int i = 0; i < times; ++i) {
    K_AccountAllocation(i % 7 + 1);
    K_AccountAllocation(-(i % 7) - 1);
  }
}

class TimeLine : public MemoryTest {
 protected:
  TimeLine() { K_SetTimeLine(1); }
  ~TimeLine() override { K_SetTimeLine(0); }
};

TEST_F(TimeLine, BeginsWithWhatThereIs) {
  void* live = NewBlock(kMiB);
  K_FreeRecycledPtr(NewBlock(2 * kMiB));
  const Handle handle = NewHandle(100);
  K_AccountAllocation(30);
  K_AccountSystemAllocation(40);
  K_SetTimeLine(1);
  const Samples samples = Read();
  ASSERT_EQ(samples.size(), 1U);
  EXPECT_EQ(samples[0].event, K_TimeLineEvent_START);
  EXPECT_EQ(samples[0].liveBytes, kMiB);
  EXPECT_EQ(samples[0].keptBytes, 2 * kMiB);
  EXPECT_EQ(samples[0].handleBytes, 100U);
  EXPECT_EQ(samples[0].application, 30);
  EXPECT_EQ(samples[0].system, 40);
  EXPECT_EQ(samples[0].purges, 0U);
  EXPECT_EQ(samples[0].failures, 0U);
  EXPECT_EQ(samples[0].changes, 1U);
  K_AccountAllocation(-30);
  K_AccountSystemAllocation(-40);
  K_FreeHandle(handle);
  K_FreeRecycledPtr(live);
}

TEST_F(TimeLine, FollowsBlocksFromUseToUse) {
  void* block = NewBlock(kMiB);
  K_FreeRecycledPtr(block);
  block = NewBlock(kMiB);
  K_FreeRecycledPtr(block);
  K_SetPoolLimit(0);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::liveBytes), ElementsAre(0, kMiB, 0, kMiB, 0, 0));
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::keptBytes), ElementsAre(0, 0, kMiB, 0, kMiB, 0));
  EXPECT_EQ(Read().back().event, K_TimeLineEvent_BLOCKS);
}

TEST_F(TimeLine, FollowsABlockThatIsNotKept) {
  K_SetPoolLimit(0);
  K_FreeRecycledPtr(NewBlock(kMiB));
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::liveBytes), ElementsAre(0, kMiB, 0));
}

TEST_F(TimeLine, FollowsHandles) {
  const Handle first = NewHandle(100);
  const Handle second = NewHandle(20);
  K_PurgeHandle(first);
  K_FreeHandle(second);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::handleBytes), ElementsAre(0, 100, 120, 20, 0));
  EXPECT_EQ(Read().back().event, K_TimeLineEvent_HANDLES);
  K_FreeHandle(first);
  EXPECT_EQ(Read().back().handleBytes, 0U);
}

TEST_F(TimeLine, FollowsBookings) {
  K_AccountAllocation(5);
  K_AccountSystemAllocation(6);
  K_AccountAllocation(-5);
  K_AccountSystemAllocation(-6);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::application), ElementsAre(0, 5, 5, 0, 0));
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::system), ElementsAre(0, 0, 6, 6, 0));
  EXPECT_EQ(Read().back().event, K_TimeLineEvent_BOOKING);
}

TEST_F(TimeLine, CountsPurges) {
  K_PurgeHandlesAndCompact();
  EXPECT_EQ(Read().back().event, K_TimeLineEvent_PURGE);
  K_PurgeLoop(
      1,
      [](void*, std::uint8_t* done) {
        *done = 0;
        return std::int32_t{0};
      },
      nullptr, 1);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::purges), ElementsAre(0, 1, 2));
}

TEST_F(TimeLine, CountsFailures) {
  AllowMore(10);
  EXPECT_EQ(NewBlock(kMiB), nullptr);
  EXPECT_EQ(K_NewHandle(kMiB), nullptr);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::failures), ElementsAre(0, 1, 2));
  EXPECT_EQ(Read().back().event, K_TimeLineEvent_FAILURE);
}

TEST_F(TimeLine, NeverGoesBackInTime) {
  BookOften(1000);
  std::uint64_t before = 0;
  for (const std::uint64_t time : Each(Read(), &K_TimeLineSample::nanoseconds)) {
    EXPECT_GE(time, before);
    before = time;
  }
  EXPECT_GT(before, 0U);
}

TEST_F(TimeLine, RecordsNothingWhileItIsOff) {
  EXPECT_EQ(K_IsTimeLineOn(), 1);
  K_AccountAllocation(5);
  K_SetTimeLine(0);
  EXPECT_EQ(K_IsTimeLineOn(), 0);
  K_AccountAllocation(-5);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::application), ElementsAre(0, 5));
}

TEST_F(TimeLine, StartsAgainEachTime) {
  K_PurgeHandlesAndCompact();
  K_SetTimeLine(1);
  EXPECT_THAT(Each(Read(), &K_TimeLineSample::purges), ElementsAre(0));
}

TEST_F(TimeLine, ReturnsTheLatestWhenThereIsNoRoomForAll) {
  K_AccountAllocation(1);
  K_AccountAllocation(2);
  K_AccountAllocation(-3);
  EXPECT_THAT(Each(Read(2), &K_TimeLineSample::application), ElementsAre(3, 0));
  K_TimeLineSample none;
  EXPECT_EQ(K_ReadTimeLine(&none, 0), 0U);
  EXPECT_EQ(K_ReadTimeLine(nullptr, 0), 4U);
}

class LongTimeLine : public TimeLine, public testing::WithParamInterface<int> {};

TEST_P(LongTimeLine, StaysWithinBoundsAndLosesNoPeakNorTheEnd) {
  const int times = GetParam();
  BookOften(times / 3);
  K_AccountAllocation(1000);
  K_AccountAllocation(-1000);
  BookOften(times - times / 3);
  K_AccountAllocation(-50);
  const Samples samples = Read();
  EXPECT_EQ(K_ReadTimeLine(nullptr, 0), samples.size());
  K_AccountAllocation(50);
  EXPECT_LE(samples.size(), std::size_t{K_MostTimeLineSamples});
  const std::vector<std::int64_t> totals = Each(samples, &K_TimeLineSample::application);
  EXPECT_EQ(std::count(totals.begin(), totals.end(), 1000), 1);
  EXPECT_EQ(totals.back(), -50);
  const std::vector<std::uint32_t> changes = Each(samples, &K_TimeLineSample::changes);
  const auto sum = std::accumulate(changes.begin(), changes.end(), std::uint64_t{0});
  EXPECT_EQ(sum, 2 * static_cast<std::uint64_t>(times) + 4);
}

TEST_P(LongTimeLine, IsAsFineAllOver) {
  BookOften(GetParam());
  const std::vector<std::uint32_t> changes = Each(Read(), &K_TimeLineSample::changes);
  for (std::size_t i = 0; i + 2 < changes.size(); ++i) ASSERT_EQ(changes[i], changes[0]) << i;
  // Merging leaves at least half of the room in use.
  const bool hasMerged = changes[0] > 1;
  EXPECT_GE(changes.size(), hasMerged ? std::size_t{K_MostTimeLineSamples} / 2 - 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Changes, LongTimeLine,
                         testing::Values(100, 2045, 2046, 2047, 4100, 33333, 100000));

TEST_F(TimeLine, TakesChangesOfManyThreads) {
  std::atomic<bool> done = false;
  std::thread reader([&done] {
    while (!done) {
      const Samples samples = Read();
      for (std::size_t i = 1; i < samples.size(); ++i) {
        ASSERT_GE(samples[i].nanoseconds, samples[i - 1].nanoseconds);
      }
    }
  });
  std::vector<std::thread> writers;
  for (int t = 0; t < 3; ++t) {
    writers.emplace_back([] {
      for (int i = 0; i < 500; ++i) {
        K_AccountAllocation(3);
        void* block = NewBlock(8192);
        K_FreeHandle(K_NewHandle(10));
        K_FreeRecycledPtr(block);
        K_AccountAllocation(-3);
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  done = true;
  reader.join();
  const K_TimeLineSample last = Read().back();
  EXPECT_EQ(last.liveBytes, 0U);
  EXPECT_EQ(last.keptBytes, Statistics().keptBytes);
  EXPECT_EQ(last.handleBytes, 0U);
  EXPECT_EQ(last.application, 0);
}

}  // namespace
