// Where all reports of the process pass.
#ifndef K_REPORT_SINK_H
#define K_REPORT_SINK_H

#include <cstdint>
#include <string>

namespace k {

// Hands a report to the sink in force. `text` is UTF-8; its line breaks become
// blanks.
void Report(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string text);

}  // namespace k

#endif
