// Passes all reports of the process to the sink. Many reports are of a lack of
// memory, so each arrives even when there is no memory for its text.
#ifndef K_REPORT_SINK_H
#define K_REPORT_SINK_H

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace k {

// Passes a report to the sink in force. `text` is UTF-8; its line breaks become
// blanks.
void Report(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string text);

// Like Report, but allocates nothing: characters beyond ASCII become question
// marks, and the text is cut to the length of the pending report.
void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string_view text);
void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error,
                 std::u16string_view text);

// Reports the text that `make` returns or, when it throws std::bad_alloc, `plain`.
template <typename Make, typename Plain>
void ReportMade(std::uint32_t code, std::uint16_t cls, std::int32_t error, Make make,
                const Plain& plain) {
  std::string text;
  try {
    text = make();
  } catch (const std::bad_alloc&) {
    return ReportPlain(code, cls, error, plain);
  }
  Report(code, cls, error, std::move(text));
}

}  // namespace k

#endif
