// The version of Q.
#include <cstdint>

#include "Q_host.h"
#include "host/version_check.h"

namespace {

constexpr std::int32_t kHeaderVersion = 18;

}  // namespace

std::int32_t Q_HeaderVersion() {
  return kHeaderVersion;
}

std::int32_t Q_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  return CheckHeaderVersion("Q", kHeaderVersion, reportCode, headerVersion);
}
