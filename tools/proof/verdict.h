// The result of the proof for a level, or for another subject.
#ifndef TOOLS_PROOF_VERDICT_H
#define TOOLS_PROOF_VERDICT_H

#include <string>
#include <vector>

#include "tools/proof/subject.h"

namespace proof {

struct Verdict {
  std::string name;
  std::string digest;  // empty if nothing was proved
  Finding difference;
};

// Runs all checks of one routine except that of all floats.
Finding Check(const Subject& subject);

// Name, digest, "ok" or the difference, in columns.
std::string Line(const Verdict& verdict);

// Marks levels whose digest is not that of the first as different, even if no check
// found a difference.
void CompareDigests(std::vector<Verdict>& levels);

bool AllEqual(const std::vector<Verdict>& verdicts);

}  // namespace proof

#endif
