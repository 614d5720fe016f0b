// Lengths and alignments.
#ifndef TOOLS_PROOF_SHAPES_H
#define TOOLS_PROOF_SHAPES_H

#include "tools/proof/subject.h"

namespace proof {

// Every length up to a few vectors, and some long ones, at every alignment of
// either side; and with runs that begin or end at a fence, where one byte too
// many crashes. Nothing but the run may be written, and nothing of the source.
Finding CheckShapes(const Subject& subject);

// The same where the source overlaps the destination. For copies; no other
// routine takes such runs.
Finding CheckOverlaps(const Subject& subject);

}  // namespace proof

#endif
