// Finds figures and verdicts in the results.
#include "bench/harness/results.h"

#include <fmt/format.h>

#include <algorithm>

namespace bench {

const Measured* Result::Fastest(Role role) const {
  const Measured* fastest = nullptr;
  for (const Measured& measured : all) {
    if (measured.role != role) continue;
    if (fastest == nullptr || measured.ms < fastest->ms) fastest = &measured;
  }
  return fastest;
}

double Result::Spread() const {
  double spread = 0;
  for (const Role role : {Role::Ours, Role::Limit, Role::Peer, Role::Reference}) {
    const Measured* fastest = Fastest(role);
    if (fastest != nullptr) spread = std::max(spread, fastest->spread);
  }
  return spread;
}

double Result::Ratio() const {
  const Measured* limit = Fastest(Role::Limit);
  return limit == nullptr ? 0 : limit->ms / Ours().ms;
}

std::string TextOf(const Exactness& exactness) {
  if (!exactness.known) return "";
  if (exactness.exact) return "exact";
  if (exactness.nominalError == 0) return "exact to full scale";
  return fmt::format("off by {:.5g}", exactness.nominalError);
}

}  // namespace bench
