// Where all reports of the process pass. Most tell of a shortage, so that each
// arrives even when there is no memory for its text.
#ifndef K_REPORT_SINK_H
#define K_REPORT_SINK_H

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace k {

// Hands a report to the sink in force. `text` is UTF-8; its line breaks become
// blanks.
void Report(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string text);

// The same without memory: what is not ASCII becomes a question mark, and no
// more of the text comes through than the pending report could hold.
void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string_view text);
void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error,
                 std::u16string_view text);

// Reports the text that `make` gives or, when there is no memory for it,
// `plain`.
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
