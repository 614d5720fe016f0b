// What the proof says of a level, or of whatever else was proved.
#ifndef TOOLS_PROOF_VERDICT_H
#define TOOLS_PROOF_VERDICT_H

#include <string>
#include <vector>

#include "tools/proof/subject.h"

namespace proof {

struct Verdict {
  std::string name;
  std::string digest;  // empty where there was nothing to prove
  Finding difference;
};

// All checks of one routine but that of all floats.
Finding Check(const Subject& subject);

// Name, digest, "ok" or what differs, in columns.
std::string Line(const Verdict& verdict);

// Levels whose digest is not that of the first differ, though no check saw it.
void CompareDigests(std::vector<Verdict>& levels);

bool AllEqual(const std::vector<Verdict>& verdicts);

}  // namespace proof

#endif
