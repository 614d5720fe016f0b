// Values, wherever they stand.
#ifndef TOOLS_PROOF_VALUES_H
#define TOOLS_PROOF_VALUES_H

#include <cstdint>
#include <functional>

#include "tools/proof/subject.h"

namespace proof {

// Each of the deciding values (inputs.h) at each place of a vector, and in runs
// of every length up to a vector (at each place of these as well, unless there
// are too many values). For conversions; the others know no values.
Finding CheckValues(const Subject& subject);

// Neighbouring floats, by their bits, in blocks of 65536.
struct FloatBlocks {
  std::uint32_t first;
  std::uint32_t count;
};
inline constexpr FloatBlocks kAllFloats = {0, 65536};

// Each float of the blocks through each of the conversions, all of them from
// float to 8 bits; one finding for each. Uses all of the processor's threads;
// meanwhile `progress` is told, on this thread, how many blocks are done.
std::vector<Finding> CheckFloats(const std::vector<Subject>& conversions, FloatBlocks blocks,
                                 const std::function<void(std::uint32_t)>& progress);

}  // namespace proof

#endif
