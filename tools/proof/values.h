// Checks of conversions with the deciding values at every place.
#ifndef TOOLS_PROOF_VALUES_H
#define TOOLS_PROOF_VALUES_H

#include "tools/proof/subject.h"

namespace proof {

// Each of the deciding values (inputs.h) at each place of a vector, and in runs
// of every length up to a vector (at each place of these as well, unless there
// are too many values). Returns nothing for other
// kinds of routines, which do not depend on values.
Finding CheckValues(const Subject& subject);

}  // namespace proof

#endif
