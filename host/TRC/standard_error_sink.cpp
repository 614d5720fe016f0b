// The default sink of the log.
#include "host/TRC/standard_error_sink.h"

#include <spdlog/logger.h>
#include <spdlog/sinks/stdout_sinks.h>

#include <cinttypes>
#include <cstdio>
#include <memory>
#include <new>

namespace trc {
namespace {

spdlog::logger& Logger() {
  // Never destroyed: events may be logged while the process ends.
  static auto* const logger = [] {
    auto* made = new spdlog::logger("TRC", std::make_shared<spdlog::sinks::stderr_sink_mt>());
    made->set_pattern("%H:%M:%S.%e %v");
    return made;
  }();
  return *logger;
}

}  // namespace

void LogToStandardError(std::int32_t level, const char* category, const char* event,
                        const char* text, void*) {
  try {
    Logger().info("{} {} {}: {}", level, category, event, text);
  } catch (const std::bad_alloc&) {
    // Without the time: this needs no memory.
    std::fprintf(stderr, "%" PRId32 " %s %s: %s\n", level, category, event, text);
  }
}

}  // namespace trc
