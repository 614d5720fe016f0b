// The version of TXT. The library depends on nothing, so that a mismatch is
// told on standard error.
#include <cinttypes>
#include <cstdio>

#include "TXT_host.h"

namespace {

constexpr std::int32_t kHeaderVersion = 3;
constexpr std::int32_t kVersionMismatch = 7;

}  // namespace

std::int32_t TXT_HeaderVersion() {
  return kHeaderVersion;
}

std::int32_t TXT_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  if (headerVersion == kHeaderVersion) return 0;
  std::fprintf(stderr,
               "0x%05" PRIX32 ": TXT is version %" PRId32 ", its caller expects %" PRId32 "\n",
               reportCode, kHeaderVersion, headerVersion);
  return kVersionMismatch;
}
