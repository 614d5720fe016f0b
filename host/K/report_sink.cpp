#include "report_sink.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <mutex>

#include "K_host.h"
#include "TRC_host.h"

namespace k {
namespace {

void ReportToStandardError(const K_Report* report, void*) {
  char error[24] = "";
  if (report->error != 0) std::snprintf(error, sizeof error, " error %" PRId32, report->error);
  std::fprintf(stderr, "0x%05" PRIX32 " class %u%s: %s\n", report->code, unsigned{report->cls},
               error, report->text);
}

struct Output {
  // Recursive, so that a sink may itself call what reports.
  std::recursive_mutex mutex;
  K_ReportSink sink = ReportToStandardError;
  void* context = nullptr;
};

// Never destroyed: reports may still come while the process ends.
Output& TheOutput() {
  static auto* const output = new Output;
  return *output;
}

bool IsLineBreak(char c) {
  return c == '\n' || c == '\r';
}

}  // namespace

void Report(std::uint32_t code, std::uint16_t cls, std::int32_t error, std::string text) {
  std::ranges::replace_if(text, IsLineBreak, ' ');
  TRC_Log(TRC_Level_DETAIL, "K", "report", text.c_str());
  const auto module = static_cast<std::uint16_t>(code >> 16);
  const auto site = static_cast<std::uint16_t>(code & 0xFFFF);
  const K_Report report{code, module, site, cls, error, text.c_str()};
  Output& output = TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink(&report, output.context);
}

}  // namespace k

void K_SetReportSink(K_ReportSink sink, void* context) {
  k::Output& output = k::TheOutput();
  const std::lock_guard lock(output.mutex);
  output.sink = sink != nullptr ? sink : k::ReportToStandardError;
  output.context = context;
}
