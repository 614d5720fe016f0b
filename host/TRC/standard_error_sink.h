// The default sink of the log.
#ifndef TRC_STANDARD_ERROR_SINK_H
#define TRC_STANDARD_ERROR_SINK_H

#include <cstdint>

namespace trc {

// Prints one line with time, level, category, event and text on standard error. A
// TRC_Sink.
void LogToStandardError(std::int32_t level, const char* category, const char* event,
                        const char* text, void* context);

}  // namespace trc

#endif
