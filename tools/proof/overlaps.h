// Checks of copies whose source and destination overlap.
#ifndef TOOLS_PROOF_OVERLAPS_H
#define TOOLS_PROOF_OVERLAPS_H

#include "tools/proof/subject.h"

namespace proof {

// Runs a copy upward and downward at short and long lengths and distances.
// Returns nothing for other kinds of routines, which take no overlapping runs.
Finding CheckOverlaps(const Subject& subject);

}  // namespace proof

#endif
