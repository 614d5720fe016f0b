// pxl soak: random calls for a given time, and a check for leaks.
#ifndef TOOLS_PXL_COMMANDS_SOAK_SOAK_COMMAND_H
#define TOOLS_PXL_COMMANDS_SOAK_SOAK_COMMAND_H

#include <cstdint>
#include <filesystem>
#include <optional>

namespace pxl {

struct SoakOptions {
  double minutes = 0.0;
  std::optional<std::uint64_t> budget;  // bytes
  std::optional<std::filesystem::path> plot;
  std::optional<std::uint64_t> seed;
};

// Returns the exit code. Throws Failure when a pixel, a handle or memory is lost.
int RunSoak(const SoakOptions& options);

}  // namespace pxl

#endif
