// The version of K.
#include <cinttypes>
#include <cstdio>

#include "K_host.h"
#include "host/K/reports/report_sink.h"

namespace {

constexpr std::int32_t kHeaderVersion = 61;
constexpr std::int32_t kVersionMismatch = 7;
constexpr std::uint16_t kVersionClass = 16;

}  // namespace

std::int32_t K_HeaderVersion() {
  return kHeaderVersion;
}

std::int32_t K_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  if (headerVersion == kHeaderVersion) return 0;
  char text[80];
  std::snprintf(text, sizeof text, "K is version %" PRId32 ", its caller expects %" PRId32,
                kHeaderVersion, headerVersion);
  k::ReportPlain(reportCode, kVersionClass, kVersionMismatch, std::string_view(text));
  return kVersionMismatch;
}
