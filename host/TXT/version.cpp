// The version of TXT.
#include <cstdint>

#include "TXT_host.h"
#include "host/version_check.h"

namespace {

constexpr std::int32_t kHeaderVersion = 3;

}  // namespace

std::int32_t TXT_HeaderVersion() {
  return kHeaderVersion;
}

std::int32_t TXT_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  return CheckHeaderVersion("TXT", kHeaderVersion, reportCode, headerVersion);
}
