// The version of Q. The library depends on nothing, so that a mismatch is
// told on standard error.
#include <cinttypes>
#include <cstdio>

#include "Q_host.h"

namespace {

constexpr std::int32_t kHeaderVersion = 18;
constexpr std::int32_t kVersionMismatch = 7;

}  // namespace

std::int32_t Q_HeaderVersion() {
  return kHeaderVersion;
}

std::int32_t Q_CheckVersions(std::uint32_t reportCode, std::int32_t headerVersion) {
  if (headerVersion == kHeaderVersion) return 0;
  std::fprintf(stderr,
               "0x%05" PRIX32 ": Q is version %" PRId32 ", its caller expects %" PRId32 "\n",
               reportCode, kHeaderVersion, headerVersion);
  return kVersionMismatch;
}
