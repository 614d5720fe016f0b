// Passes all reports of the process to the sink.
#include "host/K/reports/report_sink.h"

#include <algorithm>
#include <array>
#include <cinttypes>
#include <cstdio>
#include <mutex>

#include "K_host.h"
#include "TRC_host.h"
#include "host/immortal.h"

namespace k {
namespace {

void ReportToStandardError(const K_Report* report, void*) {
  char error[24] = "";
  if (report->error != 0) std::snprintf(error, sizeof error, " error %" PRId32, report->error);
  std::fprintf(stderr, "0x%05" PRIX32 " class %u%s: %s\n", report->code, unsigned{report->cls},
               error, report->text);
}

struct Output {
  // Recursive, since a sink may make reports.
  std::recursive_mutex mutex;
  K_ReportSink sink = ReportToStandardError;
  void* context = nullptr;
};

// Never destroyed: reports may be made while the process ends.
Output& TheOutput() {
  static Immortal<Output> output;
  return *output;
}
// Made while the library is loaded: later there may be no memory for it.
[[maybe_unused]] const Output& kLoadedOutput = TheOutput();

bool IsLineBreak(char c) {
  return c == '\n' || c == '\r';
}

// `text` ends in a zero byte.
void Deliver(std::uint32_t code, std::uint16_t cls, std::int32_t error, char* text,
             std::size_t length) {
  std::replace_if(text, text + length, IsLineBreak, ' ');
  TRC_Log(TRC_Level_DETAIL, "K", "report", text);
  const auto module = static_cast<std::uint16_t>(code >> 16);
  const auto site = static_cast<std::uint16_t>(code & 0xFFFF);
  const K_Report report{code, module, site, cls, error, text};
  Output& output = TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink(&report, output.context);
}

template <typename View>
void DeliverPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error, View text) {
  std::array<char, sizeof Kp_G_buffer> plain{};
  const std::size_t length = std::min(text.size(), plain.size() - 1);
  std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), plain.begin(),
                 [](auto c) { return c > 0 && c < 0x7F ? static_cast<char>(c) : '?'; });
  Deliver(code, cls, error, plain.data(), length);
}

}  // namespace

void Report(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string text) {
  Deliver(code, cls, error, text.data(), text.size());
}

void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string_view text) {
  DeliverPlain(code, cls, error, text);
}

void ReportPlain(std::uint32_t code, std::uint16_t cls, std::int32_t error,
                 std::u16string_view text) {
  DeliverPlain(code, cls, error, text);
}

}  // namespace k

void K_SetReportSink(K_ReportSink sink, void* context) {
  k::Output& output = k::TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink = sink != nullptr ? sink : k::ReportToStandardError;
  output.context = context;
}
