// Tests of the log: levels, sinks and the default sink.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "TRC_host.h"
#include "tests/support/system/variables.h"

namespace {

struct Event {
  std::int32_t level;
  std::string category, event, text;
  bool operator==(const Event&) const = default;
};

// Keeps the events that are logged during its life.
class Log : public testing::Test {
 protected:
  Log() { TRC_SetSink(Keep, &events_); }
  ~Log() override {
    TRC_SetSink(nullptr, nullptr);
    TRC_SetLevel(TRC_Level_PROBLEM);
  }

  std::vector<Event> events_;

 private:
  static void Keep(std::int32_t level, const char* category, const char* event, const char* text,
                   void* context) {
    static_cast<std::vector<Event>*>(context)->push_back({level, category, event, text});
  }
};

TEST_F(Log, IsSilentForLevel10AtFirst) {
  TRC_Log(10, "PXL", "birth", "");
  EXPECT_TRUE(events_.empty());
}

TEST_F(Log, TakesEventsOfTheLevelAndAbove) {
  TRC_SetLevel(10);
  TRC_Log(9, "c", "below", "t");
  TRC_Log(10, "c", "at", "t");
  TRC_Log(11, "c", "above", "t");
  const std::vector<Event> expected = {{10, "c", "at", "t"}, {11, "c", "above", "t"}};
  EXPECT_EQ(events_, expected);
}

TEST_F(Log, IsSilentAtTheSilentLevel) {
  TRC_SetLevel(TRC_Level_SILENT);
  TRC_Log(TRC_Level_PROBLEM, "c", "e", "t");
  EXPECT_TRUE(events_.empty());
}

TEST_F(Log, TakesNullForAnEmptyText) {
  TRC_Log(TRC_Level_PROBLEM, nullptr, nullptr, nullptr);
  const std::vector<Event> expected = {{TRC_Level_PROBLEM, "", "", ""}};
  EXPECT_EQ(events_, expected);
}

TEST_F(Log, PassesEventsOfManyThreadsOneByOne) {
  constexpr int kThreads = 4;
  constexpr int kEvents = 500;
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < kEvents; ++n) TRC_Log(TRC_Level_PROBLEM, "c", "e", "t");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(events_.size(), std::size_t{kThreads * kEvents});
}

TEST(LogSink, MayLogItself) {
  int events = 0;
  const auto again = [](std::int32_t level, const char*, const char*, const char*, void* context) {
    if (++*static_cast<int*>(context) < 3) TRC_Log(level, "c", "e", "t");
  };
  TRC_SetSink(again, &events);
  TRC_Log(TRC_Level_PROBLEM, "c", "e", "t");
  TRC_SetSink(nullptr, nullptr);
  EXPECT_EQ(events, 3);
}

TEST(LogSink, IsALineOnStandardErrorByDefault) {
  testing::internal::CaptureStderr();
  TRC_Log(TRC_Level_PROBLEM, "PXL", "birth", "of a module");
  const std::string line = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(line.ends_with(" 30 PXL birth: of a module\n")) << line;
}

// The environment is read once, so each case runs in its own process.
class LogLevelDeathTest : public testing::Test {
 protected:
  LogLevelDeathTest() { testing::FLAGS_gtest_death_test_style = "threadsafe"; }

  [[noreturn]] static void ExitWithLevel(const char* variable) {
    SetVariable("TRC_LEVEL", variable);
    std::_Exit(static_cast<int>(TRC_GetLevel()));
  }
};

TEST_F(LogLevelDeathTest, ComesFromTheEnvironment) {
  EXPECT_EXIT(ExitWithLevel("10"), testing::ExitedWithCode(10), "");
}

TEST_F(LogLevelDeathTest, StaysWhenTheEnvironmentHoldsNoNumber) {
  EXPECT_EXIT(ExitWithLevel("loud"), testing::ExitedWithCode(TRC_Level_PROBLEM), "");
}

}  // namespace
