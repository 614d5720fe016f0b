// The time line: samples of K's memory at each change.
#include "host/K/events/time_line.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>

#include "K_host.h"
#include "host/K/events/decimated_samples.h"

namespace k {
namespace {

using Clock = std::chrono::steady_clock;

enum class State {
  Off,
  Starting,  // changes set the values but make no samples
  On
};

std::atomic<State> theState{State::Off};
// The innermost lock of K: no other lock is taken while it is held.
std::mutex theMutex;
Clock::time_point theStart;
K_TimeLineSample theValues{};  // the latest
DecimatedSamples theSamples{};

std::uint64_t NanosecondsSinceStart() {
  const auto passed = std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - theStart);
  return static_cast<std::uint64_t>(passed.count());
}

void Record(std::int32_t event) {
  theValues.event = event;
  theValues.nanoseconds = NanosecondsSinceStart();
  theSamples.Add(theValues);
}

template <typename Change>
void Note(std::int32_t event, Change change) {
  if (theState.load(std::memory_order_relaxed) == State::Off) return;
  const std::lock_guard lock(theMutex);
  change(theValues);
  if (theState == State::On) Record(event);
}

}  // namespace

void PrepareTimeLine() {
  const std::lock_guard lock(theMutex);
  theValues = {};
  theSamples.Clear();
  theState = State::Starting;
}

void BeginTimeLine() {
  const std::lock_guard lock(theMutex);
  theStart = Clock::now();
  theState = State::On;
  Record(K_TimeLineEvent_START);
}

void StopTimeLine() {
  const std::lock_guard lock(theMutex);
  theState = State::Off;
}

void NoteBlocks(std::uint64_t liveBytes, std::uint64_t keptBytes) {
  Note(K_TimeLineEvent_BLOCKS, [=](K_TimeLineSample& values) {
    values.liveBytes = liveBytes;
    values.keptBytes = keptBytes;
  });
}

void NoteHandles(std::uint64_t bytes) {
  Note(K_TimeLineEvent_HANDLES, [=](K_TimeLineSample& values) { values.handleBytes = bytes; });
}

void NoteBookings(std::int64_t application, std::int64_t system) {
  Note(K_TimeLineEvent_BOOKING, [=](K_TimeLineSample& values) {
    values.application = application;
    values.system = system;
  });
}

void NotePurge() {
  Note(K_TimeLineEvent_PURGE, [](K_TimeLineSample& values) { ++values.purges; });
}

void NoteFailure() {
  Note(K_TimeLineEvent_FAILURE, [](K_TimeLineSample& values) { ++values.failures; });
}

}  // namespace k

Boolean K_IsTimeLineOn() {
  return k::theState != k::State::Off ? 1 : 0;
}

std::uint64_t K_ReadTimeLine(K_TimeLineSample* samples, std::uint64_t capacity) {
  const std::lock_guard lock(k::theMutex);
  const std::uint64_t count = k::theSamples.Count();
  if (samples == nullptr) return count;
  const std::uint64_t copied = std::min(count, capacity);
  for (std::uint64_t i = 0; i < copied; ++i) samples[i] = k::theSamples.At(count - copied + i);
  return copied;
}
