// All checks of a routine, and the verdict on a level in a line.
#include "tools/proof/verdict.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

#include "tools/proof/overlaps.h"
#include "tools/proof/shapes.h"
#include "tools/proof/values.h"

namespace proof {

Finding Check(const Subject& subject) {
  if (auto finding = CheckShapes(subject)) return finding;
  if (auto finding = CheckOverlaps(subject)) return finding;
  return CheckValues(subject);
}

std::string Line(const Verdict& verdict) {
  constexpr int kNameWidth = 10;
  std::ostringstream line;
  line << std::left << std::setw(kNameWidth) << verdict.name;
  if (verdict.digest.empty()) {
    line << "not on this processor";
  } else {
    line << verdict.digest << "  "
         << (verdict.difference ? "differs: " + *verdict.difference : "ok");
  }
  return line.str();
}

void CompareDigests(std::vector<Verdict>& levels) {
  for (Verdict& level : levels) {
    const bool same = level.digest.empty() || level.digest == levels.front().digest;
    if (!same && !level.difference) {
      level.difference = "the digest is not that of " + levels.front().name;
    }
  }
}

bool AllEqual(const std::vector<Verdict>& verdicts) {
  return std::none_of(verdicts.begin(), verdicts.end(),
                      [](const Verdict& verdict) { return verdict.difference.has_value(); });
}

}  // namespace proof
