// The log: the lowest level that is logged, and the sink.
#include <atomic>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "TRC_host.h"
#include "host/TRC/standard_error_sink.h"
#include "host/immortal.h"

namespace {

std::int32_t LevelFromEnvironment() {
  std::int32_t level = TRC_Level_PROBLEM;
  const char* text = std::getenv("TRC_LEVEL");
  if (text == nullptr) return level;
  // A text that is not a number does not change `level`.
  std::from_chars(text, text + std::strlen(text), level);
  return level;
}

std::atomic<std::int32_t>& Threshold() {
  static std::atomic<std::int32_t> threshold{LevelFromEnvironment()};
  return threshold;
}

struct Output {
  // Recursive, since a sink may log.
  std::recursive_mutex mutex;
  TRC_Sink sink = trc::LogToStandardError;
  void* context = nullptr;
};

Output& TheOutput() {
  static Immortal<Output> output;
  return *output;
}
// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Output& kLoadedOutput = TheOutput();

const char* OrEmpty(const char* text) {
  return text != nullptr ? text : "";
}

}  // namespace

void TRC_SetLevel(std::int32_t level) {
  Threshold().store(level, std::memory_order_relaxed);
}

std::int32_t TRC_GetLevel() {
  return Threshold().load(std::memory_order_relaxed);
}

void TRC_SetSink(TRC_Sink sink, void* context) {
  Output& output = TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink = sink != nullptr ? sink : trc::LogToStandardError;
  output.context = context;
}

void TRC_Log(std::int32_t level, const char* category, const char* event, const char* text) {
  if (level < TRC_GetLevel()) return;
  Output& output = TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink(level, OrEmpty(category), OrEmpty(event), OrEmpty(text), output.context);
}
