// Keeps the failures that a host has requested.
#include "host/QDE/pixels/faults.h"

#include <array>
#include <utility>

namespace qde {
namespace {

struct Faults {
  std::array<Error, QDE_CallCount> next{};
  bool losePixels = false;
  std::uint32_t replacements = 0;
};

Faults theFaults;

}  // namespace

Error TakeFault(std::int32_t call) {
  return std::exchange(theFaults.next[static_cast<std::size_t>(call)], kNoError);
}

bool FailedUpdatesLosePixels() {
  return theFaults.losePixels;
}

bool TakeReplacement() {
  if (theFaults.replacements == 0) return false;
  --theFaults.replacements;
  return true;
}

}  // namespace qde

void QDE_FailNextCall(std::int32_t call, std::int16_t error) {
  if (call < 0 || call >= QDE_CallCount) return;
  qde::theFaults.next[static_cast<std::size_t>(call)] =
      error < 0 ? static_cast<qde::Error>(error) : qde::kNoError;
}

void QDE_LosePixelsInFailedUpdates(Boolean on) {
  qde::theFaults.losePixels = on != 0;
}

void QDE_ReplaceWorldInUpdates(std::uint32_t updates) {
  qde::theFaults.replacements = updates;
}
