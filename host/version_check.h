// The version check of libraries that depend on nothing and therefore report on
// standard error.
#ifndef HOST_VERSION_CHECK_H
#define HOST_VERSION_CHECK_H

#include <cinttypes>
#include <cstdint>
#include <cstdio>

// Returns 0 when `headerVersion` equals `ownVersion`. Otherwise prints one line
// with `reportCode` and the library's name, and returns 7.
inline std::int32_t CheckHeaderVersion(const char* library, std::int32_t ownVersion,
                                       std::uint32_t reportCode, std::int32_t headerVersion) {
  constexpr std::int32_t kVersionMismatch = 7;
  if (headerVersion == ownVersion) return 0;
  std::fprintf(stderr,
               "0x%05" PRIX32 ": %s is version %" PRId32 ", its caller expects %" PRId32 "\n",
               reportCode, library, ownVersion, headerVersion);
  return kVersionMismatch;
}

#endif
