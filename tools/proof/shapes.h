// Checks of a routine at many lengths and alignments.
#ifndef TOOLS_PROOF_SHAPES_H
#define TOOLS_PROOF_SHAPES_H

#include "tools/proof/subject.h"

namespace proof {

// Every length up to a few vectors, and some long ones, at every alignment of
// either side; and with runs that begin or end at a fence, where an access outside of
// the run crashes. A routine must write its run alone, and leave the source unchanged.
Finding CheckShapes(const Subject& subject);

}  // namespace proof

#endif
